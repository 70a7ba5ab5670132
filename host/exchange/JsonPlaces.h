// Where in a text a parser of JSON is, for messages that name the place. The parser tells what it has met and
// not where; so it reads through this object, which watches how far it has come.
#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "host/exchange/DelimitedText.h"

namespace host {

class JsonPlaces {
 public:
  // `text` must outlive this, and this its iterators.
  explicit JsonPlaces(std::string_view text) : m_text(text) {}
  JsonPlaces(const JsonPlaces&) = delete;
  JsonPlaces& operator=(const JsonPlaces&) = delete;

  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Iterator(JsonPlaces& places, std::size_t at) : m_places(&places), m_at(at) {}
    reference operator*() const { return m_places->m_text[m_at]; }
    Iterator& operator++() {
      m_places->m_read = ++m_at;
      return *this;
    }
    Iterator operator++(int) {
      const Iterator before = *this;
      ++*this;
      return before;
    }
    bool operator==(const Iterator& other) const { return m_at == other.m_at; }

   private:
    JsonPlaces* m_places;
    std::size_t m_at;
  };

  Iterator begin() { return {*this, 0}; }
  Iterator end() { return {*this, m_text.size()}; }

  // Called when something has been met: it stands behind what was met before.
  void note();
  // Likewise, of a number: behind it the parser has read one character more.
  void noteNumber();
  // Where that is, in bytes from 0.
  std::size_t last() const { return m_last; }

  TableFault faultAt(std::size_t byte, const std::string& what) const;

 private:
  std::string_view m_text;
  std::size_t m_read = 0;
  std::size_t m_behind = 0;  // of what was met last
  std::size_t m_last = 0;
};

}  // namespace host

// Packing bytes with gzip as they come.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>

namespace host {

using AddBytes = std::function<void(std::span<const std::byte>)>;

class Gzip {
 public:
  enum Effort { quick = 1, thorough = 9 };

  // What is packed goes to `target`; what that throws passes.
  Gzip(Effort effort, AddBytes target);
  ~Gzip();
  Gzip(const Gzip&) = delete;
  Gzip& operator=(const Gzip&) = delete;

  void add(std::span<const std::byte> bytes);
  // Once, behind the last bytes.
  void finish();

 private:
  struct Stream;
  void pack(std::span<const std::byte> bytes, int flush);

  AddBytes m_target;
  std::unique_ptr<Stream> m_stream;
};

}  // namespace host

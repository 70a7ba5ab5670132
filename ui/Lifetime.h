// Tells, after something that handled messages (a modal dialog, a host's callback), whether an object is
// still there.
//
//   const Lifetime::Watch watch = m_lifetime.watch();
//   dialog.DoModal();
//   if (watch.isOver()) return;  // nothing of this object may be touched
#pragma once

#include <memory>

class Lifetime {
 public:
  class Watch {
   public:
    explicit Watch(const std::shared_ptr<char>& token) : m_token(token) {}
    bool isOver() const { return m_token.expired(); }

   private:
    std::weak_ptr<char> m_token;
  };

  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  Watch watch() const { return Watch(m_token); }

 private:
  std::shared_ptr<char> m_token = std::make_shared<char>();
};

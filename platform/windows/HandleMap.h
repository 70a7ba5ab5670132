// The objects of handles: permanent ones, which are attached, and temporary ones, made on request, which live
// at least as long as what the handle stands for, or until they are dropped. Not an MFC name. For one thread.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

template <class Handle, class Object, class Temporary, bool (*isAlive)(Handle)>
class HandleMap {
 public:
  // The one of the program. It is never destroyed, as static objects may ask for it to the very end.
  static HandleMap& the() {
    static HandleMap* const map = new HandleMap;
    return *map;
  }

  Object* findPermanent(Handle handle) const {
    const auto found = m_permanent.find(handle);
    return found == m_permanent.end() ? nullptr : found->second;
  }

  Object* find(Handle handle) {
    if (handle == nullptr) {
      return nullptr;
    }
    if (Object* const permanent = findPermanent(handle)) {
      return permanent;
    }
    if (m_temporary.size() >= m_sweepAt) {
      sweep();
    }
    auto found = m_temporary.find(handle);
    if (found == m_temporary.end()) {  // the object first: without memory there must be no entry without one
      found = m_temporary.emplace(handle, std::make_unique<Temporary>(handle)).first;
    }
    return found->second.get();
  }

  void add(Handle handle, Object* object) { m_permanent[handle] = object; }
  void remove(Handle handle) { m_permanent.erase(handle); }

  // Ends the temporary objects. They lose their handles at once, and their memory is not used again: whoever
  // has kept a pointer to one finds an object without a handle, every time.
  void drop() {
    m_dropped.reserve(m_dropped.size() + m_temporary.size());  // all or, without memory, none
    for (auto& entry : m_temporary) {
      entry.second->loseHandle();
      m_dropped.push_back(std::move(entry.second));
    }
    m_temporary.clear();
  }

 private:
  void sweep() {
    std::erase_if(m_temporary, [](const auto& entry) { return !isAlive(entry.first); });
    m_sweepAt = (std::max)(std::size_t{64}, 2 * m_temporary.size());
  }

  std::unordered_map<Handle, Object*> m_permanent;
  std::unordered_map<Handle, std::unique_ptr<Temporary>> m_temporary;
  std::vector<std::unique_ptr<Temporary>> m_dropped;
  std::size_t m_sweepAt = 64;
};

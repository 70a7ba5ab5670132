#include "host/viewer/KeptMessages.h"

namespace host {

namespace {

KeptMessages* keeping = nullptr;

}  // namespace

KeptMessages::KeptMessages() {
  keeping = this;
}

KeptMessages::~KeptMessages() {
  keeping = nullptr;
}

bool KeptMessages::keep(LPCTSTR text, UINT type) {
  if (keeping == nullptr || (type & MB_TYPEMASK) != MB_OK)
    return false;
  keeping->m_texts.emplace_back(text);
  return true;
}

}  // namespace host

// The common root of the MFC classes: a virtual destructor, and no copies.
#pragma once

class CObject {
 public:
  virtual ~CObject();
  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;

 protected:
  CObject() = default;
};

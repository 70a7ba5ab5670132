// Reaches a private function of a class by the one way that the language leaves open: where a template is
// instantiated explicitly, its arguments may name what is private. For results that only the class itself
// sees.
//
//   struct Hidden : PrivateTag<int (SomeClass::*)(int)> {};
//   template struct PrivateMember<Hidden, &SomeClass::hidden>;
//
//   (object.*privateFunction<Hidden>)(1)
#pragma once

// What a name for such a function derives from.
template <typename Type>
struct PrivateTag {
  using Function = Type;
};

template <class Tag>
inline typename Tag::Function privateFunction = nullptr;

template <class Tag, typename Tag::Function function>
struct PrivateMember {
  struct Note {
    Note() { privateFunction<Tag> = function; }
  };
  static inline const Note note;
};

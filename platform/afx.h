// The base classes under MFC's header name: text, exceptions, files, archives; and the marks of an extension
// library's exports.
// Every name here exists in MFC with the same signature and meaning; docs/platform.md lists them.
#pragma once

#include "platform/portable/Archive.h"
#include "platform/portable/Exceptions.h"
#include "platform/portable/ExtensionClass.h"
#include "platform/portable/File.h"
#include "platform/portable/FileFind.h"
#include "platform/portable/MemFile.h"
#include "platform/portable/Object.h"
#include "platform/portable/String.h"
#include "platform/portable/Types.h"

// Writing a file so that its old content is lost only when the new one is on the disk.
#pragma once

#include <afx.h>

#include <functional>

namespace host {

// Lets `write` fill a new file beside the target, under a name of its own, hands it to the disk and gives it
// the target's name. The target is then the whole new file; when anything fails it is what it was before, and
// the new file is gone. One that a killed program leaves behind ends in ".tmp", which no import of a folder
// takes for a file of dipoles.
//
// A target that is a link stays one: what it points to is replaced. The new file has the permissions of the
// old one, or the usual ones of a new file. Signals that end the program meanwhile remove the new file, see
// host/text/UnfinishedFile.h. Locks that other programs hold on the old file are not asked for: where a file
// can be renamed under them they are advice, and their holders keep the old file.
//
// Throws std::runtime_error that names the target and the cause: also when it is a folder or no regular file,
// may not be written, or `write` wrote nothing. What `write` throws of the framework is told likewise; its
// std::runtime_error passes.
void writeSafely(const CString& path, const std::function<void(CFile&)>& write);

// The same for those who write a file of a name themselves. They must have closed it.
void writeSafelyByName(const CString& path, const std::function<void(const CString&)>& write);

}  // namespace host

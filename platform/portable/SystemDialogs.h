// Messages and common dialogs that no operator answers. On Windows they are the system's own; elsewhere a
// message is a line of the standard error stream with the careful answer, and dialogs are cancelled.
#pragma once

#include "platform/portable/ColorDialog.h"
#include "platform/portable/FileDialog.h"

// The answer (ID...) to a message box.
int askSystem(LPCTSTR text, LPCTSTR caption, UINT type);

// As CFileDialog asks; the choice is laid out in `question`. Returns false when nothing was chosen, and why:
// 0 when it was cancelled, else a number of CommDlgExtendedError.
bool askSystem(OPENFILENAME& question, bool open, CWnd* parent, DWORD& why);

// As CColorDialog asks; false: cancelled.
bool askSystem(CHOOSECOLOR& question, CWnd* parent);

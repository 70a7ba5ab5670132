// What happens when a message loop finds no message. Not an MFC name.
#pragma once

// Ends the temporary objects of all handles, where the least is promised (platform/LeastPromise.h). Else they
// live on.
void dropTemporaries();

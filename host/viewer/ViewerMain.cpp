// The viewer's one global object: the program starts with it.
#include "host/viewer/ViewerApp.h"

namespace {

host::ViewerApp theApp;

}  // namespace

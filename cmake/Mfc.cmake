# The MFC names from MFC itself: the DLL that hosts and their extension libraries share. platform/ is neither
# built nor on the include path.
set(CMAKE_MFC_FLAG 2)
add_library(dipole_platform INTERFACE)
target_compile_definitions(dipole_platform INTERFACE _AFXDLL)
# The manifest is among the resources; the linker is not to make another one.
add_link_options(/MANIFEST:NO)

#include "record/Dipoles4File.h"

CDipoles4File::~CDipoles4File() = default;

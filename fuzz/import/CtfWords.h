// What the import of a CTF file, or of a table beside it, may say and ask: beginnings of the texts.
#pragma once

#include <string_view>

inline constexpr std::string_view ctfMessages[] = {
    "Can't find dipole location unit is cm or mm!",
    "Can't find latency unit is second or millisecond!",
    "Can't set CTF dipole fiducial points without MEG sphere",
    "It seems the CTF dipole file is not correct!",
    "MEG Sphere reading error: not enough points",
    "MRI fiducial point reading error: three integers expected",
    "No dipole space",
    "The different between new and old sphere model > 3 mm",
    "Total imported dipoles:",
};

inline constexpr std::string_view ctfQuestions[] = {"This is moving dipoles, would you like to import?",
                                                    "It seems the dipole location is wrong ("};

// What the extension library of the tests offers.
#pragma once

// Opens its own dialog from its own resources, modal, and returns what it ended with.
constexpr const char* runDialogName = "runExtensionDialog";
using RunDialog = long long (*)();

// Throws an exception that the caller is to catch: CUserException* for 1, std::runtime_error for 2.
constexpr const char* throwName = "throwFromExtension";
using Throw = void (*)(int which);

// What tests may ask and tell the double, beyond the platform's own functions.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform_double/types.h"

namespace platform_double {

// Uses of closed or foreign handles, of an OVERLAPPED whose operation is still under way, and of
// what the double cannot do, since the last time. A correct program leaves none.
std::vector<std::string> TakeMisuses();

size_t OpenHandles();

// Connections of pipes, counted through; both ends of one have the same number. 0: none.
size_t ConnectionOf(HANDLE pipe);

// References to the library under test, as LoadLibrary, GetModuleHandleEx and FreeLibrary count
// them.
size_t ModuleReferences();

// Loads the library under test, whose code is linked into the program. `entry`, if any, is called
// when the first reference is taken and when the last one is given back.
using LibraryEntry = BOOL(WINAPI*)(HINSTANCE module, DWORD reason, LPVOID reserved);
HMODULE LoadLinkedLibrary(LibraryEntry entry);
bool UnloadLinkedLibrary(HMODULE module);

// The session of this process; none: it cannot be read. At first it has the process's number.
void SetSession(std::optional<DWORD> session);

// Redirects the library's import `function`, and returns what it called before; null if the
// library has no such import.
void* RedirectImport(const char* function, void* replacement);

// Where the drive c: is in truth. A folder of the process's own, made when first needed.
std::string DriveFolder();

// Ends the process like the platform does: other threads stop where they are, and nothing is
// destroyed under them. Before that, leaks are looked for and coverage is written out.
[[noreturn]] void EndProcess(int exitCode);

}  // namespace platform_double

#pragma once

// Raises the bare ZORDUXNLSError of an argument check of the services. The line numbers are known
// to callers and scripts: each check has its own and keeps it, wherever its code stands.
[[noreturn]] void RaiseArgumentError(int iLine);

// Raises the ZORDuxServicesMsg for a component that does not offer an interface.
[[noreturn]] void RaiseNoInterface(const char* iComponent, const char* iInterface,
                                   const char* iFile, int iLine);

// Raises the ZORDuxServicesMsg for a schema library that is not found or not loadable.
[[noreturn]] void RaiseLibraryNotLoadable(const char* iLibrary, const char* iFile, int iLine);

// Raises the ZORDuxServicesMsg for a schema library without its creation function.
[[noreturn]] void RaiseNoCreation(const char* iLibrary, const char* iFunction, const char* iFile,
                                  int iLine);

// The file that errors of the services object name.
inline constexpr char kServicesFile[] = "VirtualServices/KW4TOOLS.m/src/ZORDuxServices";

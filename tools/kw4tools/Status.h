#pragma once

// The exit statuses of the program.
enum class Status : int {
    Yes = 0,   // done, found, yes
    No = 1,    // not found, no, null result
    Wrong = 2, // wrong usage, or an error was raised
};

inline Status YesIf(bool iSo)
{
    return iSo ? Status::Yes : Status::No;
}

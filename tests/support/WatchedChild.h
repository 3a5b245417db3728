#pragma once

#include <functional>
#include <string>
#include <vector>

// A child of the test whose system calls are watched by their real numbers, those inside the C
// library included, and which is killed at one of them or has it fail:
//
//     const WatchedEnd end = InWatchedChild({Interference::Kill, 3}, [] {
//         Watched([] { Save(); }); // killed at the third system call in here
//         return "saved";          // told to the parent, unless the child is dead by now
//     });
//
// Needs a Linux on x86-64 that lets a process trace its children.

struct Interference {
    enum Kind {
        None,
        Kill,    // the call is not made: the process is killed instead
        Tear,    // the process is killed after half of what a write was to write
        Fail,    // the call is not made (a close is) and tells of the error
        Shorten, // a write or read does half of what it was to do
    };

    Kind kind = None;
    int call = 0;         // the number of the call, from 1, in each stretch that is watched
    int error = 0;        // that a call fails with
    bool forGood = false; // all calls of the same name fare alike from then on
};

struct WatchedEnd {
    int status;         // of exit; minus the signal that killed the child
    std::string report; // what the body returned
    std::string error;  // what went to standard error
    std::string met;    // the name of the call that was interfered with; empty: there was none
    std::vector<std::string> calls; // the names of all that were made
};

// Runs the body in a child. The numbers count: for Kill all calls, for Tear writes, for Shorten
// reads and writes, for Fail those that deal with files. What the body raises makes the child exit
// with 99.
WatchedEnd InWatchedChild(const Interference& iInterference,
                          const std::function<std::string()>& iBody);

// Marks what is watched in such a child; stretches follow each other and are counted afresh.
void Watched(const std::function<void()>& iStretch);

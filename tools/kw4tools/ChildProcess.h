#pragma once

#include <functional>
#include <string>

// What came out of a child process.
struct ChildOutcome {
    std::string report; // what it wrote to the descriptor that it was given
    int signal;         // that ended it; 0 when it ended by itself
};

// Runs `iBody` in a child process, whose standard output is standard error, with a descriptor to
// report to. When the body returns the child is over; its objects are not torn down. The body must
// not raise. A Failure when there is no child to be had.
ChildOutcome RunInChild(const std::function<void(int iReport)>& iBody);

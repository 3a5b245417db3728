#pragma once

#include <algorithm>
#include <fstream>
#include <malloc.h>
#include <string>

// How much more memory the process had at its most than when this object was made. The system
// counts whole pages; what malloc had kept back for later is given back first.
class PeakMemory
{
public:
    PeakMemory()
    {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << 5; // the most is what there is now
        _Before = KiloBytes("VmRSS:");
    }
    double Bytes() const { return std::max(0.0, KiloBytes("VmHWM:") - _Before) * 1024; }

private:
    static double KiloBytes(const std::string& iName)
    {
        std::ifstream status("/proc/self/status");
        std::string word;
        while (status >> word && word != iName)
            ;
        double number = 0;
        status >> number;
        return number;
    }

    double _Before = 0;
};

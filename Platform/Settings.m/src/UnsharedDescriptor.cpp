#include "UnsharedDescriptor.h"

#include "KeepAcrossForks.h"

#include <algorithm>
#include <fcntl.h>
#include <mutex>
#include <pthread.h>
#include <vector>

namespace
{

// The numbers of all such files of this process.
class Unshared
{
public:
    static Unshared& Instance()
    {
        static Unshared* const all = new Unshared;
        return *all;
    }

    // No fork comes between the opening and the note of it.
    int Open(int iDirectory, const char* iName, int iFlags)
    {
        const std::lock_guard lock(_Mutex);
        _Files.reserve(_Files.size() + 1);
        const int file = Uninterrupted([&] { return openat(iDirectory, iName, iFlags, 0666); });
        if (file >= 0)
            _Files.push_back(file);
        return file;
    }

    void Remove(int iFile)
    {
        const std::lock_guard lock(_Mutex);
        _Files.erase(std::find(_Files.begin(), _Files.end(), iFile));
    }

private:
    Unshared()
    {
        pthread_atfork(nullptr, nullptr, [] { Instance().CloseAll(); });
        KeepAcrossForks<&Lock>();
    }

    static std::mutex& Lock() { return Instance()._Mutex; }

    // In the child, which has the threads that use them no more.
    void CloseAll()
    {
        for (const int each : _Files)
            close(each);
        _Files.clear();
    }

    std::mutex _Mutex;
    std::vector<int> _Files;
};

} // namespace

UnsharedDescriptor::UnsharedDescriptor(int iDirectory, const char* iName, int iFlags)
    : _File(Unshared::Instance().Open(iDirectory, iName, iFlags))
{
}

UnsharedDescriptor::~UnsharedDescriptor()
{
    if (_File)
        Unshared::Instance().Remove(_File.Get());
}

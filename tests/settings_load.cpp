// Many processes at one settings file: is anything lost, does anybody see what was never written,
// how long does anybody wait, and how many puts a second is that beside the bare system calls?
//
//   settings_load SECONDS [DIRECTORY [LONGEST]]
//
// The file is made below DIRECTORY (the temporary directory when it is not given). Ends with 1 when
// a promise is broken; one about time, that nobody waits LONGEST milliseconds, only when that is
// given, and then it also has to be enough puts a second.

#include "ChildProcess.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "ZORDuxServices.h"

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <fcntl.h>
#include <list>
#include <map>
#include <memory>
#include <random>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <utility>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr int kMixers = 16;
constexpr int kWriters = 8;
constexpr int kNames = 8; // of each process

const char kFile[] = "load";

// How often something was done and how long it took; shared by all processes, each has its own.
class Durations
{
public:
    void Add(Clock::duration iDuration)
    {
        const auto microseconds = static_cast<std::uint64_t>(
            std::chrono::duration_cast<std::chrono::microseconds>(iDuration).count());
        ++_Count;
        _Longest = std::max(_Longest, microseconds);
        ++_Classes[static_cast<std::size_t>(std::bit_width(microseconds * microseconds))];
    }

    void Add(const Durations& iOther)
    {
        _Count += iOther._Count;
        _Longest = std::max(_Longest, iOther._Longest);
        for (std::size_t i = 0; i < _Classes.size(); ++i)
            _Classes[i] += iOther._Classes[i];
    }

    std::uint64_t Count() const { return _Count; }
    double LongestMilliseconds() const { return static_cast<double>(_Longest) / 1000; }

    // A time that this part of all did not exceed, to a factor of the root of two.
    double Milliseconds(double iPart) const
    {
        const double wanted = iPart * static_cast<double>(_Count);
        double found = 0;
        for (std::size_t i = 0; i < _Classes.size(); ++i)
            if ((found += static_cast<double>(_Classes[i])) >= wanted)
                return std::min(std::exp2(static_cast<double>(i) / 2) / 1000,
                                LongestMilliseconds());
        return LongestMilliseconds();
    }

private:
    std::uint64_t _Count = 0;
    std::uint64_t _Longest = 0;
    std::array<std::uint64_t, 65> _Classes{}; // by the bits of the square
};

enum Step { Get, Put, Remove, List, kSteps };
const char* const kStepNames[kSteps] = {"get", "put", "remove", "list"};

struct Tally {
    std::array<Durations, kSteps> steps;
    int wrong;
};

// An array that this process shares with its children.
class Tallies
{
public:
    explicit Tallies(int iCount)
        : _Count(iCount), _All(static_cast<Tally*>(mmap(nullptr, Size(), PROT_READ | PROT_WRITE,
                                                        MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
    {
        if (_All == MAP_FAILED)
            throw std::runtime_error("no memory to share");
    }
    ~Tallies() { munmap(_All, Size()); }
    Tallies(const Tallies&) = delete;
    Tallies& operator=(const Tallies&) = delete;

    Tally& operator[](int iIndex) { return _All[iIndex]; }

    Tally Sum() const
    {
        Tally sum{};
        for (int i = 0; i < _Count; ++i) {
            for (int step = 0; step < kSteps; ++step)
                sum.steps[static_cast<std::size_t>(step)].Add(
                    _All[i].steps[static_cast<std::size_t>(step)]);
            sum.wrong += _All[i].wrong;
        }
        return sum;
    }

private:
    std::size_t Size() const { return static_cast<std::size_t>(_Count) * sizeof(Tally); }

    int _Count;
    Tally* _All;
};

// Values tell who wrote them, to which name and as which of its writes, and are whole only when the
// end says the same as the beginning.
std::string ValueOf(const std::string& iName, long iNumber)
{
    const std::string mark = iName + ' ' + std::to_string(iNumber);
    return mark + ' ' + std::string(static_cast<std::size_t>(iNumber * 37 % 400), 'x') + ' ' + mark;
}

// The number of the write, or -1 when nobody wrote that.
long NumberIn(const std::string& iName, const std::string& iValue)
{
    if (!iValue.starts_with(iName + ' '))
        return -1;
    const long number = std::strtol(iValue.c_str() + iName.size() + 1, nullptr, 10);
    return iValue == ValueOf(iName, number) ? number : -1;
}

// One of the processes: it alone writes its names, and knows what they must hold.
class Mixer
{
public:
    Mixer(int iNumber, Tally& oTally)
        : _Number(iNumber), _Random(static_cast<unsigned>(iNumber)), _Tally(oTally)
    {
    }

    void RunUntil(Clock::time_point iEnd)
    {
        while (Clock::now() < iEnd)
            switch (Any(8)) {
            case 0:
            case 1:
                PutOwn();
                break;
            case 2:
                RemoveOwn();
                break;
            case 3:
                ListAll();
                break;
            case 4:
                GetOwn();
                break;
            default:
                GetAny();
            }
    }

private:
    int Any(int iCount) { return static_cast<int>(_Random() % static_cast<unsigned>(iCount)); }

    static std::string NameOf(int iProcess, int iName)
    {
        return 'P' + std::to_string(iProcess) + '_' + std::to_string(iName);
    }

    template <class Call>
    auto Timed(Step iStep, Call iCall)
    {
        struct Timer {
            Durations& durations;
            Clock::time_point begin = Clock::now();
            ~Timer() { durations.Add(Clock::now() - begin); }
        } const timer{_Tally.steps[iStep]};
        return iCall();
    }

    void Check(bool iRight, const std::string& iWhat)
    {
        if (iRight)
            return;
        ++_Tally.wrong;
        std::fprintf(stderr, "process %d: %s\n", _Number, iWhat.c_str());
    }

    void PutOwn()
    {
        const std::string name = NameOf(_Number, Any(kNames));
        const long number = ++_Written;
        Timed(Put,
              [&] { _Services.PutSetting(name.c_str(), ValueOf(name, number).c_str(), kFile); });
        _Own[name] = number;
    }

    void RemoveOwn()
    {
        const std::string name = NameOf(_Number, Any(kNames));
        Timed(Remove, [&] { _Services.RemoveSetting(name.c_str(), kFile); });
        _Own.erase(name);
    }

    std::string Value(const std::string& iName)
    {
        return Timed(Get, [&] { return _Services.GetSetting(iName.c_str(), kFile); })
            .ConvertToChar();
    }

    void GetOwn()
    {
        const std::string name = NameOf(_Number, Any(kNames));
        const auto own = _Own.find(name);
        const std::string value = Value(name);
        Check(value == (own == _Own.end() ? "" : ValueOf(name, own->second)),
              "lost an update of " + name + ": " + value);
    }

    void GetAny()
    {
        const std::string name = NameOf(Any(kMixers), Any(kNames));
        const std::string value = Value(name);
        if (value.empty())
            return;
        const long number = NumberIn(name, value);
        Check(number >= 0, "nobody wrote to " + name + ": " + value);
        Check(number >= _Seen[name], name + " went back to " + value);
        _Seen[name] = number;
    }

    void ListAll()
    {
        const ZORListValZORUnicodeString names =
            Timed(List, [&] { return _Services.ListOfSettingVariables(kFile); });
        std::map<std::string, int> own;
        const std::string prefix = 'P' + std::to_string(_Number) + '_';
        for (const ZORUnicodeString& each : names) {
            const std::string name = each.ConvertToChar();
            if (name.starts_with(prefix))
                ++own[name];
        }
        Check(own.size() == _Own.size() && std::all_of(own.begin(), own.end(),
                                                       [&](const auto& each) {
                                                           return each.second == 1 &&
                                                                  _Own.contains(each.first);
                                                       }),
              "its names are not those that are listed");
    }

    const int _Number;
    std::minstd_rand _Random;
    Tally& _Tally;
    ZORDuxServices _Services;
    long _Written = 0;
    std::map<std::string, long> _Own;  // what it wrote last
    std::map<std::string, long> _Seen; // of any process
};

// Runs as many processes at the same time; the number of those that failed.
int InProcesses(int iCount, const std::function<void(int)>& iDo)
{
    std::list<ChildProcess> children;
    for (int i = 0; i < iCount; ++i)
        children.emplace_back([&, i] {
            iDo(i);
            return 0;
        });
    int failed = 0;
    for (ChildProcess& each : children)
        failed += each.Wait() != 0;
    return failed;
}

// Tells the figures; false when a promise is broken.
bool Mix(std::chrono::seconds iFor, double iLongest)
{
    Tallies tallies(kMixers);
    const Clock::time_point end = Clock::now() + iFor;
    const int failed =
        InProcesses(kMixers, [&](int process) { Mixer(process, tallies[process]).RunUntil(end); });
    const Tally sum = tallies.Sum();
    std::printf("%d processes mix reads, puts, removals and lists for %ld s\n", kMixers,
                static_cast<long>(iFor.count()));
    std::printf("%-8s %10s %10s %10s %10s %10s\n", "", "a second", "50 % ms", "99 % ms",
                "99.9 % ms", "longest ms");
    double longest = 0;
    for (std::size_t step = 0; step < kSteps; ++step) {
        const Durations& each = sum.steps[step];
        longest = std::max(longest, each.LongestMilliseconds());
        std::printf("%-8s %10.0f %10.2f %10.2f %10.2f %10.2f\n", kStepNames[step],
                    static_cast<double>(each.Count()) / static_cast<double>(iFor.count()),
                    each.Milliseconds(0.5), each.Milliseconds(0.99), each.Milliseconds(0.999),
                    each.LongestMilliseconds());
    }
    std::printf("%d wrong answers, %d processes failed\n", sum.wrong, failed);
    if (iLongest > 0 && longest > iLongest)
        std::printf("BROKEN: somebody waited longer than %.0f ms\n", iLongest);
    return sum.wrong == 0 && failed == 0 && (iLongest <= 0 || longest <= iLongest);
}

// The least that a put has to ask of the system: lock, read, write a new file, bring it to the
// disk, put it in the place of the old one, bring that to the disk.
class BareWriter
{
public:
    BareWriter(const std::string& iDirectory, int iNumber)
        : _Directory(open(iDirectory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
          _Line("P" + std::to_string(iNumber) + " = \"value\"\n")
    {
    }
    ~BareWriter() { close(_Directory); }
    BareWriter(const BareWriter&) = delete;
    BareWriter& operator=(const BareWriter&) = delete;

    void PutOnce() const
    {
        const int lock = Open(".bare.lock", O_RDWR | O_CREAT);
        while (flock(lock, LOCK_EX | LOCK_NB) != 0) // as the services take it
            usleep(100);
        char text[4096];
        const int old = Open("bare.toml", O_RDONLY);
        const ssize_t size = old < 0 ? 0 : read(old, text, sizeof text);
        Replace(std::string(text, static_cast<std::size_t>(std::max<ssize_t>(size, 0))));
        close(old);
        close(lock);
    }

private:
    int Open(const char* iName, int iFlags) const
    {
        return openat(_Directory, iName, iFlags | O_CLOEXEC, 0666);
    }

    void Replace(std::string iText) const
    {
        if (iText.size() > 300) // as many lines as there are writers, about
            iText.erase(0, iText.find('\n') + 1);
        iText += _Line;
        const int made = Open(".bare.tmp", O_WRONLY | O_CREAT | O_EXCL);
        if (write(made, iText.data(), iText.size()) != static_cast<ssize_t>(iText.size()))
            std::perror("write");
        fsync(made);
        close(made);
        renameat(_Directory, ".bare.tmp", _Directory, "bare.toml");
        fsync(_Directory);
    }

    const int _Directory;
    const std::string _Line;
};

// How often in a second the processes together did something.
double Rate(std::chrono::milliseconds iFor, const std::function<std::function<void()>(int)>& iMake)
{
    Tallies tallies(kWriters);
    const Clock::time_point end = Clock::now() + iFor;
    InProcesses(kWriters, [&](int process) {
        const std::function<void()> put = iMake(process);
        for (Clock::time_point now = Clock::now(); now < end;) {
            put();
            const Clock::time_point begin = std::exchange(now, Clock::now());
            tallies[process].steps[Put].Add(now - begin);
        }
    });
    return 1000 * static_cast<double>(tallies.Sum().steps[Put].Count()) /
           static_cast<double>(iFor.count());
}

// The best of several rounds each, by turns, as others may use the machine.
// False when there are fewer puts than there are to be on a machine as fast as that.
bool Race(std::chrono::milliseconds iFor, const std::string& iDirectory)
{
    constexpr int kRounds = 3;
    double puts = 0;
    double bare = 0;
    for (int round = 0; round < kRounds; ++round) {
        puts = std::max(puts, Rate(iFor, [](int process) {
                            const auto services = std::make_shared<ZORDuxServices>();
                            const std::string name = 'P' + std::to_string(process);
                            return [=, number = 0L]() mutable {
                                services->PutSetting(name.c_str(), std::to_string(++number).c_str(),
                                                     "race");
                            };
                        }));
        bare = std::max(bare, Rate(iFor, [&](int process) {
                            const auto writer = std::make_shared<BareWriter>(iDirectory, process);
                            return [=] { writer->PutOnce(); };
                        }));
    }
    std::printf("%d writers: %.0f puts a second; the bare system calls: %.0f, so that is %.2f of "
                "them\n",
                kWriters, puts, bare, puts / bare);
    constexpr double kEnough = 1500;
    return puts >= kEnough || bare < 2 * kEnough;
}

} // namespace

int main(int iCount, char** iArguments)
{
    const std::chrono::seconds seconds(iCount > 1 ? std::strtol(iArguments[1], nullptr, 10) : 0);
    if (seconds.count() <= 0) {
        std::fputs("usage: settings_load SECONDS [DIRECTORY [LONGEST]]\n", stderr);
        return 2;
    }
    const ScopedEnvironment where("TMPDIR", iCount > 2 ? iArguments[2] : "/tmp");
    const ScopedDirectory directory;
    const ScopedEnvironment path("ZOR_SETTINGS_PATH", directory.Path().string());
    std::printf("in %s\n", directory.Path().c_str());
    const double longest = iCount > 3 ? std::strtod(iArguments[3], nullptr) : 0;
    const bool kept = Mix(seconds, longest);
    const bool enough = Race(std::chrono::milliseconds(seconds) / 12, directory.Path().string());
    return kept && (enough || longest <= 0) ? 0 : 1;
}

// The loader, run as a program on a library, does in its tracing mode all that it does to load the
// library but for starting it (ldd -r rests on this too). With warnings on and immediate binding it
// writes, a line each,
//
//     <tab><library> => <file> (<address>)        a needed library
//     <tab><library> => not found                 one that is not there
//     undefined symbol: <name><tab>(<file>)       one that no library has
//     <anything>: error while loading shared libraries: <path>: <reason>

#include "LoaderTrace.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <link.h>
#include <spawn.h>
#include <stdexcept>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace
{

// The files of this process: its loader and the libraries that it has loaded.
struct Host {
    std::string loader;
    std::vector<std::string> libraries;
};

// The program's headers tell where they lie themselves, and where the loader's path does.
std::string InterpreterOf(const dl_phdr_info& iProgram)
{
    const ElfW(Phdr)* self = nullptr;
    const ElfW(Phdr)* interpreter = nullptr;
    for (int i = 0; i < iProgram.dlpi_phnum; ++i) {
        const ElfW(Phdr)& each = iProgram.dlpi_phdr[i];
        if (each.p_type == PT_PHDR)
            self = &each;
        if (each.p_type == PT_INTERP)
            interpreter = &each;
    }
    if (!self || !interpreter)
        return {};
    const char* const headers = reinterpret_cast<const char*>(iProgram.dlpi_phdr);
    return headers + interpreter->p_vaddr - self->p_vaddr;
}

int Collect(dl_phdr_info* iObject, std::size_t, void* ioHost)
{
    Host& host = *static_cast<Host*>(ioHost);
    const std::string name = iObject->dlpi_name;
    if (name.empty()) // the program comes first, and without a name
        host.loader = InterpreterOf(*iObject);
    else if (name.front() == '/' && name != host.loader)
        host.libraries.push_back(name);
    return 0;
}

// What this process runs with, but for the library itself, should it be loaded.
Host FindHost(const std::string& iPath)
{
    Host host;
    dl_iterate_phdr(Collect, &host);
    std::erase_if(host.libraries, [&](const std::string& each) {
        std::error_code ignored;
        return std::filesystem::equivalent(each, iPath, ignored);
    });
    return host;
}

// The environment of this process, but for the variables that tell the loader what to do here.
class LoaderEnvironment
{
public:
    explicit LoaderEnvironment(const Host& iHost)
        : _Own{"LD_TRACE_LOADED_OBJECTS=1", "LD_WARN=1", "LD_BIND_NOW=1", "LD_PRELOAD="}
    {
        for (const std::string& each : iHost.libraries)
            if (each.find_first_of(" :") == std::string::npos) // these separate
                _Own.back() += each + ':';
        for (char** each = environ; *each; ++each)
            if (!IsOwn(*each))
                _Pointers.push_back(*each);
        for (std::string& each : _Own)
            _Pointers.push_back(each.data());
        _Pointers.push_back(nullptr);
    }

    char** Get() { return _Pointers.data(); }

private:
    bool IsOwn(std::string_view iVariable) const
    {
        const std::string_view name = iVariable.substr(0, iVariable.find('=') + 1);
        return name == "LD_DEBUG=" ||
               std::any_of(_Own.begin(), _Own.end(), [&](const std::string& each) {
                   return each.compare(0, name.size(), name) == 0;
               });
    }

    std::vector<std::string> _Own;
    std::vector<char*> _Pointers;
};

[[noreturn]] void Fail(const std::string& iStep, int iError)
{
    throw std::runtime_error("cannot " + iStep + ": " + std::generic_category().message(iError));
}

// A child process whose output, on either stream, can be read.
class Child
{
public:
    Child(const std::string& iProgram, const std::string& iArgument, char** iEnvironment)
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            Fail("make a pipe", errno);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
        std::string program = iProgram;
        std::string argument = iArgument;
        char* const arguments[] = {program.data(), argument.data(), nullptr};
        const int error =
            posix_spawn(&_Process, program.c_str(), &actions, nullptr, arguments, iEnvironment);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        _Output = ends[0];
        if (error != 0) {
            close(_Output);
            Fail("run the loader " + iProgram, error);
        }
    }
    ~Child() { Wait(); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // All that the child writes.
    std::string Read() const
    {
        std::string text;
        char piece[4096];
        while (true) {
            const ssize_t got = read(_Output, piece, sizeof piece);
            if (got > 0)
                text.append(piece, static_cast<std::size_t>(got));
            else if (got == 0)
                return text;
            else if (errno != EINTR)
                Fail("read what the loader tells", errno);
        }
    }

    // Waits for its end and returns the signal that ended it, or 0.
    int Wait()
    {
        if (_Process < 0)
            return 0;
        close(_Output);
        int status = 0;
        while (waitpid(_Process, &status, 0) < 0 && errno == EINTR) {
        }
        _Process = -1;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

private:
    pid_t _Process = -1;
    int _Output = -1;
};

void AddOnce(std::vector<std::string>& ioNames, std::string_view iName)
{
    if (std::find(ioNames.begin(), ioNames.end(), iName) == ioNames.end())
        ioNames.emplace_back(iName);
}

// Understands the loader's lines.
class Listener
{
public:
    Listener(const std::string& iPath, const Host& iHost) : _Path(iPath), _Host(iHost) {}

    LoaderTrace Hear(std::string_view iText)
    {
        while (!iText.empty()) {
            const std::string_view line = iText.substr(0, iText.find('\n'));
            iText.remove_prefix(std::min(line.size() + 1, iText.size()));
            Take(line);
        }
        return std::move(_Trace);
    }

private:
    static constexpr std::string_view kLeadsTo = " => ";
    static constexpr std::string_view kNotFound = "not found";
    static constexpr std::string_view kUndefined = "undefined symbol: ";
    static constexpr std::string_view kVersion = ": version `";
    static constexpr std::string_view kRefusal = "error while loading shared libraries: ";

    void Take(std::string_view iLine)
    {
        if (iLine.starts_with('\t'))
            TakeLibrary(iLine.substr(1));
        else if (iLine.starts_with(kUndefined))
            TakeSymbol(iLine.substr(kUndefined.size()));
        else if (const std::size_t refusal = iLine.find(kRefusal); refusal != iLine.npos)
            TakeRefusal(iLine.substr(refusal + kRefusal.size()));
        else if (const std::size_t version = iLine.find(kVersion); version != iLine.npos)
            TakeVersion(iLine.substr(0, version), iLine.substr(version + kVersion.size()));
    }

    // "<library> => <file> (<address>)" or "<library> => not found"
    void TakeLibrary(std::string_view iLine)
    {
        const std::size_t arrow = iLine.find(kLeadsTo);
        if (arrow == iLine.npos)
            return;
        const std::string_view file = iLine.substr(arrow + kLeadsTo.size());
        if (file == kNotFound)
            AddOnce(_Trace.missingLibraries, iLine.substr(0, arrow));
        else
            _Trace.libraries.emplace_back(file.substr(0, file.rfind(" (")));
    }

    // "<name>[, version <version>]<tab>(<file>)"; what the program's own libraries lack is not this
    // one's lack.
    void TakeSymbol(std::string_view iLine)
    {
        const std::size_t tab = iLine.find('\t');
        const std::string_view file = iLine.substr(std::min(tab + 2, iLine.size()));
        const bool isHosts =
            std::any_of(_Host.libraries.begin(), _Host.libraries.end(),
                        [&](const std::string& each) { return file == each + ")"; });
        if (tab != iLine.npos && !isHosts)
            AddOnce(_Trace.missingSymbols, iLine.substr(0, std::min(tab, iLine.find(','))));
    }

    // "<path>: <file>" and "<version>' not found (required by <path>)"
    void TakeVersion(std::string_view iFile, std::string_view iRest)
    {
        const std::string_view version = iRest.substr(0, iRest.find('\''));
        AddOnce(_Trace.missingLibraries, std::string(iFile.substr(iFile.rfind('/') + 1)) +
                                             " of version " + std::string(version));
    }

    // "<path>: <reason>"
    void TakeRefusal(std::string_view iLine)
    {
        const std::string path = _Path + ": ";
        _Trace.refusal = iLine.starts_with(path) ? iLine.substr(path.size()) : iLine;
    }

    const std::string& _Path;
    const Host& _Host;
    LoaderTrace _Trace;
};

} // namespace

LoaderTrace TraceLoader(const std::string& iPath)
{
    const Host host = FindHost(iPath);
    Child loader(host.loader, iPath, LoaderEnvironment(host).Get());
    LoaderTrace trace = Listener(iPath, host).Hear(loader.Read());
    if (const int signal = loader.Wait())
        trace.refusal = "the loader does not survive it (" + std::string(strsignal(signal)) + ")";
    return trace;
}

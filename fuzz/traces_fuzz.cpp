// The operators of traces against a plain model. An input is a byte that says how lines look, two
// traces (a name, a level and whether the channel is on), and then operations until its end, each a
// byte that says what it is, for which trace, and its argument.
#include "FuzzInput.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "ZORDuxTrace.h"
#include "ZORUnicodeString.h"

#include <limits>
#include <unistd.h>

namespace
{

constexpr std::size_t kLargest = 2048; // a line is as long as its block is deep

// The file that traces write to, and what should be in it. All traces are to be made and gone while
// one lives.
class Output
{
public:
    std::string Taken()
    {
        const std::string text = _Directory.Read("trace");
        Require(truncate((_Directory / "trace").c_str(), 0) == 0 || text.empty());
        return text;
    }

    std::string expected;

private:
    ScopedDirectory _Directory;
    ScopedEnvironment _File{"ZOR_TRACE_FILE", _Directory / "trace"};
    ScopedEnvironment _Switches{"ZOR_TRACE", std::nullopt};
    ScopedEnvironment _Report{"DUX_TRACE_REPORT", std::nullopt};
};

// What a trace writes, by definition.
class Model
{
public:
    Model(Output& oOutput, std::string iName, int iLevel, bool iOn)
        : _Output(oOutput), _Name(std::move(iName)), _Level(iLevel), _Active(iOn), on(iOn)
    {
        _Name.resize(16, ' ');
        if (_gAixterm)
            _Name = "\033[36m" + _Name + "\033[37m";
        _Name += ' ';
    }
    ~Model() { _Output.expected += _Line; }
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    void Begin(const std::string& iFunction, int& ioDepth)
    {
        if (!IsShown())
            return;
        Write(iFunction, ioDepth);
        Write("() {\n", ioDepth);
        ++ioDepth;
    }
    void End(int& ioDepth)
    {
        if (!IsShown())
            return;
        --ioDepth;
        Write("}\n", ioDepth);
    }
    void SetDetailLevel(int iLevel) { _Detail = iLevel; }

    // A text that may begin with newlines, each of which ends a line.
    void Write(const std::string& iText, int iDepth)
    {
        const std::size_t rest = std::min(iText.find_first_not_of('\n'), iText.size());
        for (std::size_t i = 0; i < rest; ++i)
            WritePiece("\n", iDepth);
        if (rest < iText.size())
            WritePiece(iText.substr(rest), iDepth);
    }
    void WritePiece(const std::string& iText, int iDepth)
    {
        if (!IsShown())
            return;
        std::string text;
        if (_AtBegin) {
            text = _Name;
            char level[32];
            std::snprintf(level, sizeof level, "%04d ", _Detail);
            text += _gPrintLevelFlag ? level : "";
            for (int depth = 0; depth <= iDepth; ++depth)
                text += ": ";
        }
        _AtBegin = iText.ends_with('\n');
        if (!on)
            return;
        _Line += text + iText;
        const std::size_t end = _Line.rfind('\n') + 1;
        _Output.expected += _Line.substr(0, end);
        _Line.erase(0, end);
    }

private:
    bool IsShown() const { return _Active && _Level >= _Detail; }

    Output& _Output;
    std::string _Name;
    int _Level;
    bool _Active;
    int _Detail = 0;
    bool _AtBegin = true;
    std::string _Line;

public:
    bool on;
};

// A trace and its model, which are told the same.
class Pair
{
public:
    Pair(Output& oOutput, FuzzInput& ioInput, char iFirst)
        : _Name(iFirst + ioInput.Text()), _Level(ioInput.Integer()),
          _Model(oOutput, _Name, _Level, Switch(ioInput.Byte() % 4 != 0)),
          _Trace(_Name.data(), nullptr, nullptr, _Level)
    {
    }

    void Do(FuzzInput& ioInput, int& ioDepth)
    {
        switch (ioInput.Byte() % 13) {
        case 0: {
            const std::string function = ioInput.Text();
            _Trace.FunctionBegin(function.c_str());
            return _Model.Begin(function, ioDepth);
        }
        case 1:
            _Trace.FunctionEnd();
            return _Model.End(ioDepth);
        case 2: {
            const int level = ioInput.Integer();
            _Trace.SetDetailLevel(level);
            return _Model.SetDetailLevel(level);
        }
        case 3:
        case 4: {
            const std::string text = ioInput.Text();
            _Trace << text.c_str();
            return _Model.Write(text, ioDepth);
        }
        case 5: {
            const std::string text = ioInput.Text();
            _Trace << ZORUnicodeString(text.c_str());
            return _Model.Write(text, ioDepth);
        }
        case 6: {
            const char character = ioInput.Character();
            _Trace << character;
            return _Model.WritePiece(character ? std::string(1, character) : "", ioDepth);
        }
        case 7: {
            const int number = ioInput.Integer();
            _Trace << number;
            return _Model.WritePiece(std::to_string(number), ioDepth);
        }
        case 8: {
            const long factor = ioInput.Integer();
            const long number = factor * (1L << ioInput.Byte() % 32);
            _Trace << number;
            return _Model.WritePiece(std::to_string(number), ioDepth);
        }
        case 9: {
            const double number = ioInput.Integer() / 4.0;
            _Trace << number;
            return _Model.WritePiece(std::to_string(static_cast<long>(number)), ioDepth);
        }
        case 10:
            _Trace << std::numeric_limits<double>::infinity();
            return _Model.WritePiece(std::to_string(std::numeric_limits<long>::max()), ioDepth);
        case 11: {
            const void* const pointer = &ioInput;
            char text[32];
            std::snprintf(text, sizeof text, "%p", pointer);
            _Trace << pointer;
            return _Model.WritePiece(text, ioDepth);
        }
        default:
            _Model.on = ioInput.Byte() % 2 != 0;
            ZORTrace::SetSwitch(_Name.c_str(), _Model.on);
        }
    }
    const std::string& Name() const { return _Name; }

private:
    bool Switch(bool iOn) const
    {
        ZORTrace::SetSwitch(_Name.c_str(), iOn);
        return iOn;
    }

    std::string _Name;
    int _Level;
    Model _Model;
    ZORDuxTrace _Trace;
};

// The first trace reads the environment.
void InitialiseTraces()
{
    char name[] = "";
    ZORDuxTrace(name, nullptr, nullptr, 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iSize)
{
    if (iSize > kLargest)
        return 0;
    static Output output;
    static const bool initialised = (InitialiseTraces(), true);
    Require(initialised);
    FuzzInput input(iBytes, iSize);
    const unsigned looks = input.Byte();
    _gPrintLevelFlag = looks % 2 != 0;
    _gAixterm = looks / 2 % 2 != 0;
    int depth = -1 + static_cast<int>(looks / 4 % 16 * 50);
    ZORDuxTrace::_gLevel = depth;
    output.expected.clear();
    {
        Pair first(output, input, 'a');
        Pair second(output, input, 'b');
        while (!input.IsEmpty())
            (input.Byte() % 2 == 0 ? first : second).Do(input, depth);
        Require(ZORDuxTrace::_gLevel == depth);
    }
    RequireEqual(output.Taken(), output.expected);
    return 0;
}

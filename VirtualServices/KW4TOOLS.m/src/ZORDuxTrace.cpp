#include "ZORDuxTrace.h"

#include "CoverageReport.h"
#include "ZORGetEnv.h"
#include "ZORUnicodeString.h"
#include "traput.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

int ZORDuxTrace::_gInit = 0;
int ZORDuxTrace::_gLevel = 0;
ZORDuxTrace* ZORDuxTrace::_gTrace = nullptr;

int TraceStackHead = 0;
int _gPrintLevelFlag = 0;
int _gAixterm = 0;
int _gTraceFunction = 0;
std::ofstream* _gReport = nullptr;
int _gCoverageReport = 0;
int _gTraceNumber = 0;
int _gTraceTotalNumber = 0;
char BufferAgile[1024] = {};

namespace
{

constexpr int kLineRoom = 1024;
constexpr int kNameField = 16;
constexpr int kPlainHeader = kNameField + 1;
constexpr char kCyan[] = "\033[36m";
constexpr char kWhite[] = "\033[37m";
constexpr int kColouredHeader = kPlainHeader + sizeof kCyan - 1 + sizeof kWhite - 1;
constexpr int kUsualPutLevel = 2;

bool IsSet(const char* iVariable)
{
    return ZORGetEnv(iVariable) != nullptr;
}

void OpenReport(const char* iPath)
{
    auto report = std::make_unique<CoverageReport>(iPath);
    const bool opened = !report->fail();
    const char* const result = opened ? "using file " : "failed to open file ";
    std::cerr << (std::string("DUX_TRACE_REPORT: ") + result + iPath + "\n") << std::flush;
    if (!opened)
        return;
    _gReport = report.release();
    _gCoverageReport = 1;
}

// Adds a line to the report, if there is one. Trouble with an earlier line does not keep this one
// back.
template <class... Texts>
void Report(const Texts&... iTexts)
{
    if (!_gReport)
        return;
    _gReport->clear();
    (*_gReport << ... << iTexts) << '\n' << std::flush;
}

long WithoutFraction(double iNumber)
{
    constexpr double kBeyondLong = -static_cast<double>(LONG_MIN);
    if (std::isnan(iNumber))
        return 0;
    if (iNumber >= kBeyondLong)
        return LONG_MAX;
    return iNumber < -kBeyondLong ? LONG_MIN : static_cast<long>(iNumber);
}

} // namespace

ZORDuxTrace::ZORDuxTrace(char* iName, char* iSecond, char* iThird, int iLevel)
    : ZORTrace(iName, iSecond, 0, iThird, kLineRoom), _Active(*_Switch), _LineStart(1),
      _PutLevel(kUsualPutLevel), _DetailLevel(_LastLevel), _Level(iLevel)
{
    if (!_gInit)
        Initialise();
    const char* const name = iName ? iName : "";
    BuildHeader(name);
    ++_gTraceNumber;
    ++_gTraceTotalNumber;
    if (_gCoverageReport)
        Report(_Active ? "_DUX Trace            :" : "_DUX Trace [Inactive] : ", name);
}

ZORDuxTrace::~ZORDuxTrace()
{
    delete[] _Header;
    if (--_gTraceNumber != 0 || !_gReport)
        return;
    Report("Total trace number = ", _gTraceTotalNumber);
    delete _gReport;
    _gReport = nullptr;
}

void ZORDuxTrace::Initialise()
{
    _gInit = 1;
    _gLevel = -1;
    TraceStackHead = -1;
    if (IsSet("DUX_TRACE_DEBUG"))
        _gTraceFunction = 1;
    if (IsSet("DUX_TRACE_LEVEL"))
        _gPrintLevelFlag = 1;
    if (const char* const terminal = ZORGetEnv("TERM"))
        _gAixterm = std::strcmp(terminal, "aixterm") == 0 && IsSet("DUX_TRACE_COLOR");
    if (const char* const report = ZORGetEnv("DUX_TRACE_REPORT"))
        OpenReport(report);
}

// The name in its field: padded, or cut.
void ZORDuxTrace::BuildHeader(const char* iName)
{
    constexpr std::size_t room = kColouredHeader + 1;
    _Header = new char[room];
    if (_gAixterm)
        std::snprintf(_Header, room, "%s%-*.*s%s ", kCyan, kNameField, kNameField, iName, kWhite);
    else
        std::snprintf(_Header, room, "%-*.*s ", kNameField, kNameField, iName);
    _HeaderLength = _gAixterm ? kColouredHeader : kPlainHeader;
}

void ZORDuxTrace::FunctionBegin(const char* iFunction)
{
    if (IsShown()) {
        *this << iFunction << "() {" << '\n';
        ++_gLevel;
    }
    ++TraceStackHead;
    if (_gCoverageReport)
        Report(_Header, " : ", iFunction ? iFunction : "");
}

void ZORDuxTrace::FunctionEnd()
{
    if (IsShown()) {
        --_gLevel;
        *this << "}" << '\n';
    }
    --TraceStackHead;
}

void ZORDuxTrace::SetDetailLevel(int iLevel)
{
    _DetailLevel = iLevel;
    _PutLevel = iLevel;
}

bool ZORDuxTrace::IsShown() const
{
    return _Active && _Level >= _DetailLevel;
}

ZORDuxTrace* ZORDuxTrace::Current()
{
    return _gTrace;
}

// The marks of a deep block are put in pieces of the buffer's size.
void ZORDuxTrace::Header()
{
    constexpr std::string_view kMark = ": ";
    if (!_LineStart)
        return;
    std::memcpy(BufferAgile, _Header, static_cast<std::size_t>(_HeaderLength));
    char* end = BufferAgile + _HeaderLength;
    if (_gPrintLevelFlag)
        end += std::snprintf(end, 16, "%04d ", _DetailLevel);
    for (int depth = 0; depth <= _gLevel; ++depth) {
        if (end + kMark.size() >= std::end(BufferAgile)) { // a NUL has to follow
            *end = '\0';
            Put(BufferAgile);
            end = BufferAgile;
        }
        end = std::copy(kMark.begin(), kMark.end(), end);
    }
    *end = '\0';
    Put(BufferAgile);
    _LineStart = 0;
}

void ZORDuxTrace::Put(const char* iText)
{
    if (!*_Switch)
        return;
    _LastLevel = _PutLevel;
    traput(_Handle, _PutLevel, iText);
}

ZORDuxTrace& ZORDuxTrace::operator<<(const char* iText)
{
    if (!iText || !IsShown())
        return *this;
    for (; *iText == '\n'; ++iText)
        *this << '\n';
    if (*iText) {
        Header();
        _LineStart = iText[std::strlen(iText) - 1] == '\n';
        Put(iText);
    }
    return *this;
}

ZORDuxTrace& ZORDuxTrace::operator<<(const ZORUnicodeString& iText)
{
    return *this << iText.ConvertToChar();
}

ZORDuxTrace& ZORDuxTrace::operator<<(char iCharacter)
{
    if (!IsShown())
        return *this;
    Header();
    BufferAgile[0] = iCharacter;
    BufferAgile[1] = '\0';
    Put(BufferAgile);
    if (iCharacter == '\n')
        _LineStart = 1;
    return *this;
}

ZORDuxTrace& ZORDuxTrace::WriteNumber(long iNumber)
{
    if (!IsShown())
        return *this;
    Header();
    if (*_Switch) {
        _LastLevel = _PutLevel;
        _traputl(_Handle, _PutLevel, "", &iNumber, 0);
    }
    return *this;
}

ZORDuxTrace& ZORDuxTrace::operator<<(int iNumber)
{
    return WriteNumber(iNumber);
}

ZORDuxTrace& ZORDuxTrace::operator<<(long iNumber)
{
    return WriteNumber(iNumber);
}

ZORDuxTrace& ZORDuxTrace::operator<<(double iNumber)
{
    return WriteNumber(WithoutFraction(iNumber));
}

ZORDuxTrace& ZORDuxTrace::operator<<(const void* iPointer)
{
    if (!IsShown())
        return *this;
    Header();
    std::snprintf(BufferAgile, sizeof BufferAgile, "%p", iPointer);
    Put(BufferAgile);
    return *this;
}

ZORDuxTrace& ZORDuxTrace::operator<<(const ZORBaseUnknown* iComponent)
{
    return *this << static_cast<const void*>(iComponent);
}

ZORDuxTrace& ZORDuxTrace::operator<<(const ZORBaseUnknown_var& iComponent)
{
    return *this << static_cast<const void*>(iComponent.Get());
}

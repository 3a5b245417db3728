#include "ZORError.h"

#include "ErrorText.h"
#include "MessagePlaces.h"
#include "ZORRaisedError.h"

#include <cstdarg>
#include <cstdio>
#include <ostream>

ZOR_IMPLEMENT_CLASS(ZORError, ZORKindImplementation, ZORBaseUnknown)

namespace
{

std::string Hexadecimal(unsigned int iNumber)
{
    char digits[2 * sizeof iNumber + 3];
    std::snprintf(digits, sizeof digits, "0x%x", iNumber);
    return digits;
}

} // namespace

ZORError::ZORError(unsigned int iId) : _Id(iId) {}

ZORError::ZORError(const ZORError& iOther)
    : ZORBaseUnknown(iOther), _Id(iOther._Id), _Parameters(iOther._Parameters), _Text(iOther._Text),
      _History(iOther._History)
{
}

ZORError::~ZORError() = default;

ZORError* ZORError::CloneSelf()
{
    return new ZORError(*this);
}

void ZORError::GetErrorTable(unsigned int* oCount, const ZORErrDsc** oTable)
{
    *oCount = 0;
    *oTable = nullptr;
}

ZORError& ZORError::Setup(const char* iFile, int iLine)
{
    if (iFile)
        _History.push_back({iFile, iLine});
    return *this;
}

ZORError& ZORError::SetParameters(int iCount, ...)
{
    _Parameters.clear();
    std::va_list texts;
    va_start(texts, iCount);
    for (int i = 0; i < iCount; ++i) {
        const char* const text = va_arg(texts, const char*);
        _Parameters.emplace_back(text ? text : "");
    }
    va_end(texts);
    return *this;
}

ZORError& ZORError::SetText(const ZORUnicodeString& iText)
{
    _Text = iText;
    return *this;
}

const char* ZORError::GetParameter(int iNumber) const
{
    if (iNumber < 1 || static_cast<std::size_t>(iNumber) > _Parameters.size())
        return nullptr;
    return _Parameters[static_cast<std::size_t>(iNumber) - 1].c_str();
}

const char* ZORError::GetFile() const
{
    return _History.empty() ? nullptr : _History.front().file.c_str();
}

int ZORError::GetLine() const
{
    return _History.empty() ? 0 : _History.front().line;
}

void ZORError::Throw(const char* iFile, int iLine)
{
    const ZORRaisedError holder(this); // releases this error when there is no memory for the place
    Setup(iFile, iLine);
    throw ZORRaisedError(this);
}

std::string ZORError::Identity() const
{
    return std::string(IsA()) + " (" + Hexadecimal(_Id) + ")";
}

std::string ZORError::RaisedAt(const Place& iPlace) const
{
    return "raised in " + iPlace.file + ", line " + std::to_string(iPlace.line);
}

// Empty when the error has no text but that of its place.
std::string ZORError::Text()
{
    if (!_Text.IsEmpty())
        return _Text.ConvertToChar();
    unsigned int count = 0;
    const ZORErrDsc* table = nullptr;
    GetErrorTable(&count, &table);
    for (unsigned int i = 0; i < count; ++i)
        if (table[i].id == _Id && table[i].text)
            return FillPlaces(ErrorText(IsA(), _Id, table[i].text),
                              {_Parameters.begin(), _Parameters.end()});
    return {};
}

ZORUnicodeString ZORError::GetMessage(int iForm)
{
    const std::string name = iForm == 0 ? IsA() : Identity();
    const std::string text = Text();
    if (!text.empty())
        return (iForm == 0 ? text : name + ": " + text).c_str();
    return (name + " " + (_History.empty() ? "never raised" : RaisedAt(_History.front()))).c_str();
}

void ZORError::Display(int iForm, std::ostream& oStream)
{
    oStream << GetMessage(iForm).ConvertToChar() << std::endl;
}

void ZORError::PrintHistory(std::ostream& oStream)
{
    for (const Place& place : _History)
        oStream << IsA() << ' ' << RaisedAt(place) << std::endl;
}

#include "StringComparison.h"

#include "GuardedText.h"
#include "NewText.h"
#include "StringModel.h"

#include "ZORDuxStrings.h"

#include <memory>
#include <sstream>

namespace
{
constexpr std::size_t kLongest = 1 << 16;

// One text laid out as the arguments say.
class PlacedText
{
public:
    PlacedText(GuardedText& iStorage, const std::string& iText, StringArguments::Place iPlace)
    {
        if (iPlace == StringArguments::InBlock) {
            _Block = std::make_unique<char[]>(iText.size() + 1);
            _Text = std::char_traits<char>::copy(_Block.get(), iText.c_str(), iText.size() + 1);
        } else {
            _Text =
                iPlace == StringArguments::AtEnd ? iStorage.AtEnd(iText) : iStorage.AtBegin(iText);
        }
    }
    operator char*() const { return _Text; }

private:
    std::unique_ptr<char[]> _Block;
    char* _Text;
};

std::string Show(const std::string& iText)
{
    std::ostringstream shown;
    shown << '"';
    for (const char c : iText)
        if (c >= ' ' && c <= '~')
            shown << c;
        else
            shown << "\\x" << std::hex << static_cast<int>(static_cast<unsigned char>(c));
    shown << '"';
    return shown.str();
}
std::string Show(const model::Text& iText)
{
    return iText ? Show(*iText) : "null";
}
std::string Show(int iNumber)
{
    return std::to_string(iNumber);
}
std::string Show(const model::Swapped& iSwapped)
{
    return std::to_string(iSwapped.count) + " " + Show(iSwapped.text);
}

std::string Show(const StringArguments& iArguments)
{
    std::ostringstream shown;
    shown << "text " << Show(iArguments.text) << " other " << Show(iArguments.other) << " mode "
          << Show(iArguments.mode) << " character " << Show(iArguments.character) << " first "
          << iArguments.first << " second " << iArguments.second << " width " << iArguments.width
          << " separator " << Show(std::string(1, iArguments.separator)) << " from "
          << Show(std::string(1, iArguments.from)) << " to " << Show(std::string(1, iArguments.to))
          << " place " << iArguments.place << '\n';
    return shown.str();
}

class Comparison
{
public:
    explicit Comparison(const StringArguments& iArguments) : _Arguments(iArguments) {}

    std::string Run()
    {
        CompareCutting();
        CompareChanging();
        setwsep(_Arguments.separator);
        CompareWords();
        setwsep(' ');
        return _Differences.empty() ? "" : _Differences + "for " + Show(_Arguments);
    }

private:
    PlacedText Text() { return Place(0, _Arguments.text); }
    PlacedText Other() { return Place(1, _Arguments.other); }
    PlacedText Mode() { return Place(2, _Arguments.mode); }
    PlacedText Character() { return Place(3, _Arguments.character); }
    PlacedText Place(int iStorage, const std::string& iText)
    {
        static GuardedText storages[] = {GuardedText(kLongest), GuardedText(kLongest),
                                         GuardedText(kLongest), GuardedText(kLongest)};
        return {storages[iStorage], iText, _Arguments.place};
    }

    template <class Value>
    void Expect(const char* iFunction, const Value& iResult, const Value& iModel)
    {
        if (!(iResult == iModel))
            _Differences +=
                std::string(iFunction) + " gives " + Show(iResult) + ", not " + Show(iModel) + "\n";
    }

    void CompareCutting()
    {
        const auto& [text, other, mode, character, first, second, width, separator, from, to,
                     place] = _Arguments;
        const auto placed = Text();
        const auto placedOther = Other();
        Expect("left", Take(::left(placed, first)), model::Left(text, first));
        Expect("right", Read(::right(placed, first)), model::Right(text, first));
        Expect("substr", Take(substr(placed, first, second)), model::SubStr(text, first, second));
        Expect("insert", Take(insert(placedOther, placed, first)),
               model::Insert(other, text, first));
        Expect("overly", Take(overly(placedOther, placed, first)),
               model::Overly(other, text, first));
        Expect("pad", Take(pad(placed, width, to)), model::Pad(text, width, to));
        Expect("strip", Take(strip(placed, Mode(), Character())),
               model::Text(model::Strip(text, mode, character)));
        Expect("pos", pos(placedOther, placed, first), model::Pos(other, text, first));
        // Whatever was not to be changed was not.
        Expect("the text", Read(placed), model::Text(text));
        Expect("the other text", Read(placedOther), model::Text(other));
    }

    void CompareChanging()
    {
        const std::string& text = _Arguments.text;
        const auto& [from, to, first] = std::tie(_Arguments.from, _Arguments.to, _Arguments.first);
        {
            const auto changed = Text();
            const unsigned count = cswap(from, to, changed, first);
            Expect("cswap", model::Swapped{count, std::string(changed)},
                   model::CSwap(from, to, text, first));
        }
        Expect("lower", Read(lower(Text())), model::Text(model::Lower(text)));
        Expect("upper", Read(upper(Text())), model::Text(model::Upper(text)));
        Expect("qstrip", Read(qstrip(Text())), model::Text(model::QStrip(text)));
    }

    void CompareWords()
    {
        const auto& [text, other, mode, character, first, second, width, separator, from, to,
                     place] = _Arguments;
        const auto placed = Text();
        const auto placedOther = Other();
        const int number = static_cast<int>(first);
        // The one case that keeps memory is left to tests of its own.
        if (const auto expected = model::Word(text, first, separator); expected || text.empty())
            Expect("word", Take(word(placed, first)), expected);
        Expect("xword", Read(xword(placed, first)), model::XWord(text, first, separator));
        Expect("wordlen", wordlen(placed, number), model::WordLen(text, number, separator));
        Expect("subword", Take(subword(placed, first, second)),
               model::SubWord(text, first, second, separator));
        Expect("wordpos", wordpos(placedOther, placed, first),
               model::WordPos(other, text, first, separator));
        Expect("the text", Read(placed), model::Text(text));
        Expect("the other text", Read(placedOther), model::Text(other));
    }

    const StringArguments& _Arguments;
    std::string _Differences;
};
} // namespace

std::string CompareWithModel(const StringArguments& iArguments)
{
    return Comparison(iArguments).Run();
}

#include "IntervalDrawing.h"

#include <algorithm>
#include <cstdint>
#include <set>

namespace
{

constexpr std::size_t kNameColumns = 8;
constexpr std::size_t kScaleColumns = 45;
constexpr std::size_t kAreaColumns = kScaleColumns + 2; // what is open goes beyond the scale
constexpr std::size_t kMostColumnsPerUnit = 4;

// Where values stand between the lowest and the highest of them.
class Scale
{
public:
    explicit Scale(const std::set<int>& iValues)
        : _Lowest(*iValues.begin()), _Range(Distance(*iValues.rbegin()))
    {
        constexpr std::uint64_t most = kScaleColumns - 1;
        if (_Range <= most)
            _ColumnsPerUnit = std::min<std::uint64_t>(kMostColumnsPerUnit,
                                                      most / std::max<std::uint64_t>(_Range, 1));
    }

    std::size_t Column(int iValue) const
    {
        if (_ColumnsPerUnit > 0)
            return Distance(iValue) * _ColumnsPerUnit;
        return (Distance(iValue) * (kScaleColumns - 1) + _Range / 2) / _Range;
    }

private:
    std::uint64_t Distance(int iValue) const
    {
        return static_cast<std::uint64_t>(std::int64_t{iValue} - _Lowest);
    }

    std::int64_t _Lowest;
    std::uint64_t _Range;
    std::uint64_t _ColumnsPerUnit = 0; // 0: proportional
};

// One line of the picture: a name, the area, a remark.
std::string Line(const std::string& iName, std::string iArea, const std::string& iRemark = {})
{
    iArea.resize(kAreaColumns, ' ');
    std::string line = iName;
    line.resize(kNameColumns, ' ');
    line += iArea + ' ' + iRemark;
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

void Put(std::string& ioArea, std::size_t iColumn, const std::string& iText)
{
    ioArea.replace(iColumn, iText.size(), iText);
}

// Puts the number at its column, or as far left of it as the area demands, unless it would touch
// another.
void PutNumber(std::string& ioArea, std::size_t iColumn, int iValue)
{
    const std::string number = std::to_string(iValue);
    const std::size_t column = std::min(iColumn, kAreaColumns - number.size());
    const std::size_t before = column > 0 ? column - 1 : 0;
    const std::string around = ioArea.substr(before, column - before + number.size() + 1);
    if (around.find_first_not_of(' ') == std::string::npos)
        Put(ioArea, column, number);
}

std::string DrawScale(const Scale& iScale, const std::set<int>& iValues)
{
    std::string numbers(kAreaColumns, ' ');
    PutNumber(numbers, iScale.Column(*iValues.begin()), *iValues.begin());
    PutNumber(numbers, iScale.Column(*iValues.rbegin()), *iValues.rbegin());
    std::string axis(iScale.Column(*iValues.rbegin()) + 1, '-');
    for (const int value : iValues) {
        PutNumber(numbers, iScale.Column(value), value);
        axis[iScale.Column(value)] = '+';
    }
    return Line("", numbers) + Line("", axis);
}

std::string Text(const DrawnInterval& iInterval)
{
    const std::string start = std::to_string(iInterval.start);
    return iInterval.end ? start + ':' + std::to_string(*iInterval.end) : start + " and up";
}

std::string Area(const Scale& iScale, const DrawnInterval& iInterval)
{
    std::string area(kAreaColumns, ' ');
    const std::size_t start = iScale.Column(iInterval.start);
    const std::size_t end = iInterval.end ? iScale.Column(*iInterval.end) : kAreaColumns - 1;
    const auto [from, to] = std::minmax(start, end);
    const bool backwards = end < start;
    Put(area, from, std::string(to - from + 1, backwards ? '.' : '='));
    area[end] = iInterval.end ? ']' : '>';
    area[start] = '[';
    if (start == end)
        area[start] = '|';
    return area;
}

std::string DrawInterval(const std::string& iName, const Scale& iScale,
                         const DrawnInterval& iInterval)
{
    return Line(iName, Area(iScale, iInterval), Text(iInterval));
}

} // namespace

std::vector<DrawnInterval> PiecesOf(int iCode, const std::vector<int>& iValues)
{
    constexpr int kOpenPieceFirst = 6;
    constexpr int kOpenEndMarked = 9;
    std::vector<DrawnInterval> pieces;
    auto next = iValues.begin();
    if (iCode == kOpenPieceFirst && next != iValues.end())
        pieces.push_back({*next++, std::nullopt});
    while (next != iValues.end()) {
        DrawnInterval piece{*next++, std::nullopt};
        if (next != iValues.end()) {
            piece.end = *next++;
            if (iCode == kOpenEndMarked)
                piece.end.reset();
        }
        pieces.push_back(piece);
    }
    return pieces;
}

std::string DrawIntervals(const DrawnInterval& iFirst, const DrawnInterval& iSecond,
                          const std::vector<DrawnInterval>& iPieces)
{
    std::vector<DrawnInterval> all = iPieces;
    all.insert(all.end(), {iFirst, iSecond});
    std::set<int> values;
    for (const DrawnInterval& each : all) {
        values.insert(each.start);
        values.insert(each.end.value_or(each.start));
    }
    const Scale scale(values);
    std::string picture = DrawScale(scale, values) + DrawInterval("first", scale, iFirst) +
                          DrawInterval("second", scale, iSecond);
    for (const DrawnInterval& piece : iPieces)
        picture += DrawInterval("piece", scale, piece);
    return picture;
}

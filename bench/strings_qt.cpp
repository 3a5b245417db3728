#include "strings_rows.h"

#include <QString>
#include <QStringList>

namespace
{

struct WithQt {
    using Text = QString;

    static QString Word(const Text& iText, std::size_t iNumber)
    {
        const int number = static_cast<int>(iNumber) - 1;
        return iText.section(' ', number, number, QString::SectionSkipEmpty);
    }
    static QString Joined(const Text& iText, std::size_t iCount)
    {
        return iText.split(' ', Qt::SkipEmptyParts).mid(0, static_cast<int>(iCount)).join(' ');
    }
    static long Position(const Text& iWord, const Text& iText)
    {
        return iText.splitRef(' ', Qt::SkipEmptyParts).indexOf(QStringRef(&iWord)) + 1;
    }
};

const Rows kRows([] { StringRows<WithQt>("Qt"); });

} // namespace

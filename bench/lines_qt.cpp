#include "lines_rows.h"

#include <QFile>

namespace
{

std::vector<QByteArray> Read(const char* iPath)
{
    std::vector<QByteArray> lines;
    QFile file(QString::fromUtf8(iPath));
    file.open(QIODevice::ReadOnly);
    while (!file.atEnd())
        lines.push_back(file.readLine());
    return lines;
}

void Write(const std::vector<QByteArray>& iLines, const char* iPath)
{
    QFile file(QString::fromUtf8(iPath));
    file.open(QIODevice::WriteOnly);
    for (const QByteArray& each : iLines)
        file.write(each);
}

const Rows kRows([] {
    ReadRow("read", "Qt", Read);
    WriteRow("Qt", Read, Write);
});

} // namespace

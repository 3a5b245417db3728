#include "identifiers_rows.h"

#include <QByteArray>
#include <QSet>

namespace
{

const Rows kRows([] { IdentifierRows<WithSet<QSet<QByteArray>, QVector<QByteArray>>>("QSet"); });

} // namespace

#include "uuids_rows.h"

#include <QUuid>

namespace
{

const Rows kRows([] {
    UuidRow("QUuid", [](char* oText) {
        const QByteArray text = QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
        std::strcpy(oText, text.constData());
    });
});

} // namespace

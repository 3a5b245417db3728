#include "memory_rows.h"

#include <QByteArray>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QVariant>

namespace
{

const Rows kRows([] {
    StringMemory<QString>("Qt");
    AnyMemory(
        "Qt",
        [] {
            return QVariant(
                QByteArray(reinterpret_cast<const char*>(kSomeOctets), sizeof kSomeOctets));
        },
        [] { return QVariant(kSomeNumber); });
    SubscriberMemory(
        "Qt", [] { return std::make_unique<QObject>(); },
        [](QObject& ioSender) {
            QObject::connect(&ioSender, &QObject::objectNameChanged, [] { ++calls; });
        },
        [](QObject& ioSender) { ioSender.setObjectName("sent"); });
    SettingMemory(
        "Qt", true,
        [](const std::string& iPath) {
            return std::make_unique<QSettings>(QString::fromStdString(iPath), QSettings::IniFormat);
        },
        [](const QSettings& iKept, const std::string& iName) {
            return iKept.value("settings/" + QString::fromStdString(iName))
                .toString()
                .toStdString();
        });
});

} // namespace

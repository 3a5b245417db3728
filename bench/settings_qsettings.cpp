#include "settings_rows.h"

#include <QSettings>

namespace
{

struct WithQSettings {
    struct Text : QString {
        Text(const char* iText) : QString(iText) {}
        Text(const std::string& iText) : QString(QString::fromStdString(iText)) {}
    };
    static constexpr bool kSyncs = true;

    static void Write(const std::string& iPath, const Settings& iSettings)
    {
        QSettings file(QString::fromStdString(iPath), QSettings::IniFormat);
        for (std::size_t i = 0; i < iSettings.names.size(); ++i)
            file.setValue(Text(iSettings.names[i]), Text(iSettings.values[i]));
    }
    explicit WithQSettings(const std::string& iPath) : path(QString::fromStdString(iPath)) {}

    QString Get(const Text& iName)
    {
        return QSettings(path, QSettings::IniFormat).value(iName).toString();
    }
    // Sorted, as Qt has them.
    QStringList List() { return QSettings(path, QSettings::IniFormat).allKeys(); }
    void Put(const Text& iName, const Text& iValue)
    {
        QSettings file(path, QSettings::IniFormat);
        file.setValue(iName, QString(iValue));
        file.sync();
    }

    const QString path;
};

const Rows kRows([] { SettingsRows<WithQSettings>("QSettings"); });

} // namespace

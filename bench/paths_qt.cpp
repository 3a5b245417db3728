#include "paths_site.h"

#include <QSettings>
#include <QStandardPaths>

namespace
{

// What one would write with QSettings and findExecutable.
class WithQt
{
public:
    explicit WithQt(const SearchSite& iSite)
        : _File(QString::fromStdString(iSite.site.root / "settings.ini"))
    {
        QSettings file(_File, QSettings::IniFormat);
        for (const auto& [name, value] : iSite.settings)
            file.setValue(QString::fromStdString(name), QString::fromStdString(value));
    }
    QString Find(const QString& iName)
    {
        const QSettings file(_File, QSettings::IniFormat);
        QStringList entries = file.value("DUX_SEARCH_PATH").toString().split(':');
        for (QString& entry : entries) {
            if (entry.startsWith("$$"))
                entry = file.value(entry.mid(2)).toString();
            const int dollar = entry.indexOf('$');
            if (dollar < 0)
                continue;
            const int slash = entry.indexOf('/', dollar);
            const QString variable = entry.mid(dollar + 1, slash - dollar - 1);
            entry.replace('$' + variable, qEnvironmentVariable(variable.toLatin1().constData()));
        }
        return QStandardPaths::findExecutable(iName, entries);
    }

private:
    const QString _File;
};

const Rows kRows([] {
    SeekFileRows<QString>("Qt", [](const QString& iName, const QString& iPath) {
        return QStandardPaths::findExecutable(iName, iPath.split(':'));
    });
    SearchPathRow<WithQt>("QSettings + findExecutable");
});

} // namespace

#include "settings_rows.h"

#include <KConfig>
#include <KConfigGroup>

namespace
{

struct WithKConfig {
    struct Text : QString {
        Text(const char* iText) : QString(iText) {}
        Text(const std::string& iText) : QString(QString::fromStdString(iText)) {}
    };
    static constexpr bool kSyncs = true;

    static void Write(const std::string& iPath, const Settings& iSettings)
    {
        KConfig file(QString::fromStdString(iPath), KConfig::SimpleConfig);
        KConfigGroup group(&file, "settings");
        for (std::size_t i = 0; i < iSettings.names.size(); ++i)
            group.writeEntry(Text(iSettings.names[i]), QString(Text(iSettings.values[i])));
    }
    explicit WithKConfig(const std::string& iPath) : path(QString::fromStdString(iPath)) {}

    QString Get(const Text& iName)
    {
        const KConfig file(path, KConfig::SimpleConfig);
        return KConfigGroup(&file, "settings").readEntry(iName, QString());
    }
    QStringList List()
    {
        const KConfig file(path, KConfig::SimpleConfig);
        return KConfigGroup(&file, "settings").keyList();
    }
    void Put(const Text& iName, const Text& iValue)
    {
        KConfig file(path, KConfig::SimpleConfig);
        KConfigGroup(&file, "settings").writeEntry(iName, QString(iValue));
        file.sync();
    }

    const QString path;
};

const Rows kRows([] { SettingsRows<WithKConfig>("KConfig"); });

} // namespace

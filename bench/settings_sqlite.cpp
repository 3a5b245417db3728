#include "settings_rows.h"

#include <memory>
#include <sqlite3.h>

namespace
{

struct Closing {
    void operator()(sqlite3* iDatabase) const { sqlite3_close(iDatabase); }
    void operator()(sqlite3_stmt* iStatement) const { sqlite3_finalize(iStatement); }
};
using Database = std::unique_ptr<sqlite3, Closing>;
using Statement = std::unique_ptr<sqlite3_stmt, Closing>;

Database Open(const std::string& iPath)
{
    sqlite3* database = nullptr;
    sqlite3_open(iPath.c_str(), &database);
    return Database(database);
}

Statement Prepare(const Database& iDatabase, const char* iText)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(iDatabase.get(), iText, -1, &statement, nullptr);
    return Statement(statement);
}

void Bind(const Statement& ioStatement, int iPlace, const std::string& iText)
{
    sqlite3_bind_text(ioStatement.get(), iPlace, iText.data(), static_cast<int>(iText.size()),
                      SQLITE_STATIC);
}

std::string Column(const Statement& iStatement)
{
    return reinterpret_cast<const char*>(sqlite3_column_text(iStatement.get(), 0));
}

// With the database open and the statements ready all the time. It syncs by its own defaults.
class WithSQLite
{
public:
    using Text = std::string;
    static constexpr bool kSyncs = true;

    static void Write(const std::string& iPath, const Settings& iSettings)
    {
        const Database database = Open(iPath);
        sqlite3_exec(database.get(), "BEGIN; CREATE TABLE settings(name TEXT PRIMARY KEY, value)",
                     nullptr, nullptr, nullptr);
        const Statement insert = Prepare(database, "INSERT INTO settings VALUES(?1, ?2)");
        for (std::size_t i = 0; i < iSettings.names.size(); ++i) {
            Bind(insert, 1, iSettings.names[i]);
            Bind(insert, 2, iSettings.values[i]);
            sqlite3_step(insert.get());
            sqlite3_reset(insert.get());
        }
        sqlite3_exec(database.get(), "COMMIT", nullptr, nullptr, nullptr);
    }
    explicit WithSQLite(const std::string& iPath)
        : _Path(iPath), _Database(Open(iPath)),
          _Get(Prepare(_Database, "SELECT value FROM settings WHERE name = ?1")),
          _List(Prepare(_Database, "SELECT name FROM settings ORDER BY rowid")),
          _Put(Prepare(_Database, "UPDATE settings SET value = ?2 WHERE name = ?1"))
    {
    }

    Text Get(const Text& iName)
    {
        Bind(_Get, 1, iName);
        sqlite3_step(_Get.get());
        const Text value = Column(_Get);
        sqlite3_reset(_Get.get());
        return value;
    }
    std::vector<Text> List()
    {
        std::vector<Text> list;
        while (sqlite3_step(_List.get()) == SQLITE_ROW)
            list.push_back(Column(_List));
        sqlite3_reset(_List.get());
        return list;
    }
    void Put(const Text& iName, const Text& iValue)
    {
        Bind(_Put, 1, iName);
        Bind(_Put, 2, iValue);
        sqlite3_step(_Put.get());
        sqlite3_reset(_Put.get());
    }

    void PutByAnother(const Text& iName, const Text& iValue)
    {
        WithSQLite(_Path).Put(iName, iValue);
    }

private:
    const std::string _Path;
    const Database _Database;
    const Statement _Get;
    const Statement _List;
    const Statement _Put;
};

const Rows kRows([] { SettingsRows<WithSQLite>("SQLite"); });

} // namespace

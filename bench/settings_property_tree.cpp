#include "settings_rows.h"

#include <boost/property_tree/ini_parser.hpp>

namespace
{

using Tree = boost::property_tree::ptree;

struct WithPropertyTree {
    using Text = std::string;
    static constexpr bool kSyncs = false; // and a reader may see half of what it writes

    static void Write(const std::string& iPath, const Settings& iSettings)
    {
        Tree tree;
        for (std::size_t i = 0; i < iSettings.names.size(); ++i)
            tree.push_back({iSettings.names[i], Tree(iSettings.values[i])});
        write_ini(iPath, tree);
    }
    explicit WithPropertyTree(const std::string& iPath) : path(iPath) {}

    Tree Read() const
    {
        Tree tree;
        read_ini(path, tree);
        return tree;
    }
    Text Get(const Text& iName) { return Read().get<std::string>(iName); }
    std::vector<Text> List()
    {
        std::vector<Text> list;
        for (const auto& each : Read())
            list.push_back(each.first);
        return list;
    }
    void Put(const Text& iName, const Text& iValue)
    {
        Tree tree = Read();
        tree.put(iName, iValue);
        write_ini(path, tree);
    }

    const std::string path;
};

const Rows kRows([] { SettingsRows<WithPropertyTree>("property_tree"); });

} // namespace

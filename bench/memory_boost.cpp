#include "memory_rows.h"

#include <boost/any.hpp>
#include <boost/property_tree/ini_parser.hpp>
#include <boost/signals2.hpp>

namespace
{

using Signal = boost::signals2::signal<void()>;
using Tree = boost::property_tree::ptree;

std::unique_ptr<Tree> ReadTree(const std::string& iPath)
{
    auto tree = std::make_unique<Tree>();
    read_ini(iPath, *tree);
    return tree;
}

const Rows kRows([] {
    AnyMemory(
        "Boost",
        [] {
            return boost::any(
                std::vector<unsigned char>(kSomeOctets, kSomeOctets + sizeof kSomeOctets));
        },
        [] { return boost::any(kSomeNumber); });
    SubscriberMemory(
        "Boost", [] { return std::make_unique<Signal>(); },
        [](Signal& ioSender) { ioSender.connect([] { ++calls; }); },
        [](Signal& ioSender) { ioSender(); });
    SettingMemory("Boost", true, ReadTree, [](const Tree& iTree, const std::string& iName) {
        return iTree.get<std::string>("settings." + iName);
    });
});

} // namespace

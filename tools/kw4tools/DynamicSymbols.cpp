#include "DynamicSymbols.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <fstream>
#include <iterator>
#include <link.h>
#include <span>
#include <string_view>

namespace
{

// The bytes of an ELF file. Nothing that the file says about itself is trusted: whatever would lie
// outside of it is empty.
class ElfFile
{
public:
    explicit ElfFile(const std::string& iPath)
    {
        std::ifstream file(iPath, std::ios::binary);
        _Bytes.assign(std::istreambuf_iterator<char>(file), {});
    }

    template <class Item>
    std::span<const Item> Items(std::size_t iOffset, std::size_t iCount) const
    {
        if (iOffset % alignof(Item) != 0 || iOffset > _Bytes.size() ||
            iCount > (_Bytes.size() - iOffset) / sizeof(Item))
            return {};
        return {reinterpret_cast<const Item*>(_Bytes.data() + iOffset), iCount};
    }

    std::span<const ElfW(Shdr)> Sections() const
    {
        const auto header = Items<ElfW(Ehdr)>(0, 1);
        if (header.empty() || !IsNative(header[0]))
            return {};
        return Items<ElfW(Shdr)>(header[0].e_shoff, header[0].e_shnum);
    }

    bool IsNative() const
    {
        const auto header = Items<ElfW(Ehdr)>(0, 1);
        return !header.empty() && IsNative(header[0]);
    }

private:
    static bool IsNative(const ElfW(Ehdr) & iHeader)
    {
        constexpr unsigned char order =
            std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;
        constexpr unsigned char width = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
        return std::memcmp(iHeader.e_ident, ELFMAG, SELFMAG) == 0 &&
               iHeader.e_ident[EI_CLASS] == width && iHeader.e_ident[EI_DATA] == order &&
               iHeader.e_shentsize == sizeof(ElfW(Shdr));
    }

    std::string _Bytes;
};

bool IsForOthers(const ElfW(Sym) & iSymbol)
{
    const unsigned int visibility = iSymbol.st_other & 3U;
    return iSymbol.st_shndx != SHN_UNDEF && ELF64_ST_BIND(iSymbol.st_info) != STB_LOCAL &&
           (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
}

bool Defines(const ElfFile& iFile, const ElfW(Shdr) & iSymbols, const ElfW(Shdr) & iNames,
             std::string_view iName)
{
    const auto names = iFile.Items<char>(iNames.sh_offset, iNames.sh_size);
    const auto symbols =
        iFile.Items<ElfW(Sym)>(iSymbols.sh_offset, iSymbols.sh_size / sizeof(ElfW(Sym)));
    return std::any_of(symbols.begin(), symbols.end(), [&](const ElfW(Sym) & each) {
        const std::string_view rest =
            each.st_name < names.size()
                ? std::string_view(names.data() + each.st_name, names.size() - each.st_name)
                : std::string_view();
        return IsForOthers(each) && rest.substr(0, rest.find('\0')) == iName;
    });
}

} // namespace

bool ExportsSymbol(const std::string& iLibrary, const std::string& iSymbol)
{
    const ElfFile file(iLibrary);
    const auto sections = file.Sections();
    if (sections.empty())
        return file.IsNative();
    return std::any_of(sections.begin(), sections.end(), [&](const ElfW(Shdr) & each) {
        return each.sh_type == SHT_DYNSYM && each.sh_link < sections.size() &&
               Defines(file, each, sections[each.sh_link], iSymbol);
    });
}

#pragma once

#include "ZORClass.h"
#include "ZORUnicodeString.h"

#include <memory>

class CatalogLookup;
class ZORMsg;

// A catalog of messages in the user's language.
//
//     ZORMsgCatalog* catalog = new ZORMsgCatalog("ZORDUXCdaErrorMsg");
//     ZORMsg* message = catalog->GetMsg("CDA_W_0001.Short");
//     …
//     message->Release();
//     catalog->Release();
//
// The texts stand in files named <catalog>.toml, in UTF-8. A message is a table with a short and a
// long text, or a plain string; its key is the path to the text:
//
//     [CDA_W_0001]
//     Short = "The part {1} is locked."                # CDA_W_0001.Short
//     Long = """The part {1} is locked by {2}.
//     Ask for a release, or work on a copy."""         # CDA_W_0001.Long
//
// A value that is no string, or has a NUL in it, is no text.
//
// Directories are those of ZOR_CATALOG_PATH, with ":" between, and behind them the one that is
// installed with the platform (share/zor/catalogs). In a directory, a sub-directory named after a
// locale holds its texts, or one named after the language; the texts of the directory itself are
// for all.
//
// The user's locales are that of LC_ALL, LC_MESSAGES or LANG, whichever is the first to be set and
// not empty; for users who have one other than "C" and "POSIX", LANGUAGE, when it is set and not
// empty, gives a list with ":" between instead, and a "C" in it ends it. For each locale, as in
// de_AT.UTF-8@euro, and in each directory the sub-directories de_AT.UTF-8@euro, de_AT@euro, de_AT,
// de@euro and de are looked into; after all locales, each directory itself.
//
// A text is taken from the first file that has its key, so a half-translated catalog still answers.
// A file that is on the way and cannot be read, is damaged, is larger than 16 MiB, or is no plain
// file is an error, never a wait.
//
// Thread rule: a catalog is for one thread; two threads may use two catalogs.
class ZOR_EXPORT ZORMsgCatalog : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // Settles where to look, by the environment as it is now. Opens nothing: a catalog that does
    // not exist is told by GetMsg. A name that is null, empty or has a "/" is no catalog's.
    explicit ZORMsgCatalog(const char* iName);
    ~ZORMsgCatalog() override;
    ZORMsgCatalog(const ZORMsgCatalog&) = delete;
    ZORMsgCatalog& operator=(const ZORMsgCatalog&) = delete;

    // The message of that key, new, with one reference, the caller's; never null. A file is read
    // when it is first needed, and looked at once in the life of this object. Raises a ZORMsgError
    // when there is no such catalog or key, or a file cannot be used.
    ZORMsg* GetMsg(const ZORUnicodeString& iKey);

private:
    ZORUnicodeString _Name;
    std::unique_ptr<CatalogLookup> _Lookup;
};

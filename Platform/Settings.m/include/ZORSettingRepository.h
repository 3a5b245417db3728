#pragma once

#include "ZORExport.h"

class ZORBaseUnknown;

// A settings file: named attributes, each an ordered list of strings.
//
//     std::unique_ptr<ZORSettingRepository> site(ZORSettingRepository::GetRepository("site"));
//     ZORString name = "DUX_PATH", value = "/usr/share/dux";
//     ZORBaseUnknown* items[] = {&name, &value};
//     site->WriteSetting("DUX_PATH", items, 2);
//     site->SaveRepository();
//
// leaves this in ~/.config/zor/site.toml:
//
//     DUX_PATH = "/usr/share/dux"
//
// Place. The file NAME is <directory>/NAME.toml, where the directory is the first of
// ZOR_SETTINGS_PATH (separated by ":"; empty ones do not count) that holds the file, else the first
// of them. While that variable is unset or empty, the directory is $XDG_CONFIG_HOME/zor, if that is
// absolute, else $HOME/.config/zor. A name with a "/" is a path as it stands. Where nothing names a
// directory, a repository is empty and saving it an error. The first save makes a missing
// directory, for its owner alone.
//
// Format. TOML 1.0, to be edited by people at any time:
//
//     NAME = "value"                 # attribute NAME with the strings ("NAME", "value")
//     PORT = 8080                    # ("PORT", "8080"): numbers, truth values, dates as they are
//     "two words" = 'C:\dux'         # any name and any way of quoting
//     PATHS = ["first", "second"]    # the general form: any number of strings
//     [window]                       # tables, names with dots, lists of lists or of tables:
//     width = 640                    # left alone, and no attributes
//
// A byte that is not part of well-formed UTF-8 is written as \u0000 followed by \u0080 to \u00FF:
// `"\u0000\u00E9"` is the single byte E9. Any other \u0000 is an error, for no text can hold a NUL.
//
// Saving changes the bytes of changed values and no others: comments, blank lines, order, line
// breaks, a byte order mark and the spelling of names stay. A value keeps its way of quoting where
// that can carry the new text. A new name comes after the last one, above any table. A removed one
// takes its line, and the comment on it, along.
//
// Limits. Names have at most 199 bytes (callers rely on buffers of 200); a longer one is refused
// when written, and damage when met in a file. Files have at most 64 MiB, and tables with dotted
// names some 20,000 parts.
//
// Sharing. Any number of processes may read and save one file. Readers never wait and see the file
// as it was before or after a save. A save takes a lock, ".NAME.lock" beside the file, for which it
// waits 10 seconds at most; reads the file again, makes its changes, and replaces the file as a
// whole, through ".NAME.tmp", by one that has reached the disk. It follows symbolic links and keeps
// mode, owner and group as far as the system permits. When it fails, or the process dies, the file
// is the old or the new one, whole, and the next save finds nothing in its way.
//
// Errors. Whatever fails raises a ZORSettingError whose text names the file and the step, and line
// and column when the file is damaged. A damaged file is never written to.
//
// Cost. A file that did not change is not read again: GetRepository then costs one look at the file
// system for each directory. Looking a name up costs one hash. The files last used, 64 at most,
// stay in memory.
//
// Thread rule: one thread at a time for one repository; any number of repositories, of one file
// too, in as many threads. Process-wide: the environment is read, so none may change it meanwhile.
class ZOR_EXPORT ZORSettingRepository
{
public:
    // The settings file of that name, as it is now; empty when it is not there. The caller deletes
    // it. Raises an error when the name is null or empty, or the file is damaged, too large, no
    // regular file, or cannot be read.
    static ZORSettingRepository* GetRepository(const char* iName);

    // Forgets what was not saved.
    virtual ~ZORSettingRepository();
    ZORSettingRepository(const ZORSettingRepository&) = delete;
    ZORSettingRepository& operator=(const ZORSettingRepository&) = delete;

    // Fills the caller's items with the strings of the attribute, what is written here and not
    // saved yet included. Each item is a ZORString; anything else, null too, is left alone. Items
    // beyond the strings become empty, so that one array serves many attributes. All of them stay
    // as they are when there is no such attribute (or the name or the array is null, or the count
    // below 1).
    void ReadSetting(const char* iName, ZORBaseUnknown** ioItems, long iCount);

    // Makes the items the attribute's strings, in place of any it has; none for a count below 1.
    // They are copied; saved by SaveRepository.
    // Raises an error, and changes nothing, when the name is null or has more than 199 bytes, or
    // an item is not a ZORString.
    void WriteSetting(const char* iName, ZORBaseUnknown** iItems, long iCount);

    // Removes the attribute, if there is one; saved by SaveRepository. Null names none.
    void DelAttribute(const char* iName);

    // Brings what was written and removed into the file, and with it what others saved meanwhile
    // into this repository. Costs nothing when nothing was. When it raises an error the file is as
    // it was, and the changes wait for the next save.
    void SaveRepository();

    // The next attribute of the iteration, which each repository has one of and which begins with
    // the first call: every attribute that is there then is visited once, in the order of the file
    // and with new ones at the end, no matter what is written, removed or saved meanwhile. Returns
    // 0, or -1 when there is none left, also ever after.
    //
    // oName and oText are buffers of 200 bytes, and with oNumber each may be null. oName becomes
    // the attribute's name, oText its second string (its last, when it has fewer; empty, when it
    // has none), cut to 199 bytes between two characters, oNumber the number of its strings; with
    // -1 all three are left alone. iMode is 0; any other value means the same.
    int NextAttribute(char* oName, char* oText, long* oNumber, short iMode);

private:
    struct State;
    ZOR_HIDDEN ZORSettingRepository();
    ZOR_HIDDEN State& Self();
};

#pragma once

#include "ZORClass.h"
#include "ZORDuxFileAccess.h"
#include "ZORHandle.h"
#include "ZORIContainer.h"
#include "ZORListValZORUnicodeString.h"
#include "ZORUnicodeString.h"
#include "_SEQUENCE_octet.h"

// The common services: search paths, settings, environment, line files, file checks, identifiers,
// schemas and containers.
//
//     ZORIDuxServices_var services = CreateServices();
//     services->PutSetting("DUX_SEARCH_PATH", "/site/models:$HOME/models:$$PROJECT", "DUXAdmin");
//     ZORUnicodeString path = services->SearchPath("plate.model");
//
// The order of the operations is part of the binary interface.
//
// What holds for all of them:
// - Texts are UTF-8, file names are used byte for byte. Results are the caller's own copies.
// - Errors are raised as ZORRaisedError with a ZORError inside. Each operation also tells them on
//   standard error before they go on to the caller, but for SeekFile, SeekPath, GetEnv,
//   GetDynamicObjList and the two of the separator. An argument that must not be empty but is
//   raises a ZORDUXNLSError; a settings file that is damaged, or cannot be read or saved, a
//   ZORSettingError (see ZORSettingRepository.h).
// - Each operation opens a method trace scope of level 42, named "ZORDuxServices::" and its own
//   name, and writes its arguments to it (of WriteStream the file name alone), most of them their
//   result or progress too (see ZORPSNTrace.h).
// - Thread rule: one thread at a time for one services object.
class ZOR_EXPORT ZORIDuxServices : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // For the classes that implement the interface.
    ZORIDuxServices();
    ~ZORIDuxServices() override;

    // The first directory of `iPath` in which the file `iFileName` exists, followed by "/" and the
    // name; empty when there is none. `iPath` is split at the characters of the setting separator;
    // blanks stay. Costs one access(2) a directory.
    virtual ZORUnicodeString SeekFile(const ZORUnicodeString& iFileName,
                                      const ZORUnicodeString& iPath) = 0;

    // Whether the path exists and may be read, written and executed by this process: four access(2)
    // calls, so the answers are not taken at one instant. An empty path does not exist.
    virtual ZORDuxFileAccess CheckFile(const ZORUnicodeString& iFullPath) = 0;

    // Loads the schema library "lib" + name + ".so" (as named from the current directory, else
    // along LD_LIBRARY_PATH) and runs its function "fctCreate" + name. The library stays loaded.
    // Raises ZORDuxServicesMsg 0x20003 when the library is not found or cannot be loaded, 0x20004
    // when it has no such function; what the function raises goes on to the caller.
    virtual void LoadSchema(const ZORUnicodeString& iSchemaName) = 0;

    // The characters that separate the directories of a path list: ":" for new services.
    virtual ZORUnicodeString GetSettingSeparator() = 0;

    // Sets the separator; each of its characters separates. Empty: a path list is one directory.
    virtual void PutSettingSeparator(const ZORUnicodeString& iSeparator) = 0;

    // The value of the setting `iVariableName` of the settings file `iFileName`; empty when there
    // is none. Neither may be empty. A damaged or unreadable file raises.
    virtual ZORUnicodeString GetSetting(const ZORUnicodeString& iVariableName,
                                        const ZORUnicodeString& iFileName) = 0;

    // Stores a setting and saves the file at once; when this returns the setting is on the disk.
    // Name (at most 199 bytes) and value may be empty; the file name may not.
    virtual void PutSetting(const ZORUnicodeString& iSettingName,
                            const ZORUnicodeString& iSettingValue,
                            const ZORUnicodeString& iFileName) = 0;

    // Removes every setting whose stored name is `iSettingName`, saving the file after each one;
    // nothing happens when there is none. The file name may not be empty.
    virtual void RemoveSetting(const ZORUnicodeString& iSettingName,
                               const ZORUnicodeString& iFileName) = 0;

    // The stored names of the settings of a file, in the file's order, repeated ones included. The
    // file name may not be empty.
    virtual ZORListValZORUnicodeString
    ListOfSettingVariables(const ZORUnicodeString& iFileName) = 0;

    // Finds a file: its base name along the path list of the setting "DUX_SEARCH_PATH" of the
    // settings file "DUXAdmin", then in what is written before the last "/" (itself a path list,
    // split at the separator; nothing in "/plate", so the root is not looked into), then in the
    // current directory. Returns the path it was found under (the bare base name when in the
    // current directory), empty when it was not found. A name that ends in "/" asks for a
    // directory. In the path list, blanks around an entry go, "$$NAME" as a whole entry stands for
    // that setting of "DUXAdmin", and the first "$NAME" of an entry, up to the next "/", for an
    // environment variable. Raises what GetSetting raises: for a damaged DUXAdmin, and for an entry
    // that is "$$" alone.
    virtual ZORUnicodeString SearchPath(const ZORUnicodeString& iFileName) = 0;

    // The directories of a path list, without the blanks around them; a piece made of blanks alone
    // gives an empty element. Runs of separators count as one.
    virtual ZORListValZORUnicodeString SeekPath(const ZORUnicodeString& iFullPath) = 0;

    // The directories of a path list held in an environment variable; none when it is unset. Blank
    // pieces are left out.
    virtual ZORListValZORUnicodeString GetEnv(const ZORUnicodeString& iEnvType) = 0;

    // A new identifier as octets: the characters of its text form, without a NUL; maximum is the
    // length.
    virtual _SEQUENCE_octet GetOctetIdentifier() = 0;

    // A new identifier as text: a version 4 UUID of RFC 9562, 36 lower-case characters.
    virtual ZORUnicodeString GetIdentifier() = 0;

    // The names of the classes that support an interface, in the order of their dictionary entries,
    // those of dictionary files included; none when no class does.
    virtual ZORListValZORUnicodeString
    GetDynamicObjList(const ZORUnicodeString& iInterfaceName) = 0;

    // A container over a new model of that type and schema, which lives as long as the container (a
    // handle on ZORIDuxModel made from it leads back to the model). Raises ZORDuxServicesMsg
    // 0x20002 when models do not offer their interface.
    virtual ZORIContainer_var CreateSimpleContainer(const ZORUnicodeString& iModelType,
                                                    const ZORUnicodeString& iTheSchemaName) = 0;

    // Writes the elements to a file one after the other, adding nothing, not even line ends; the
    // file is made or emptied first. Returns 1 when all was written and the file closed, else 0.
    // After a failed write the file stays open.
    virtual int WriteStream(const ZORListValZORUnicodeString& iLines,
                            const ZORUnicodeString& iFileName) = 0;

    // The lines of a file with their line ends, a line of more than 1,023 bytes in pieces of that
    // size. A piece ends at a NUL. Empty when the file cannot be opened; what was read so far (and
    // the file left open) when reading fails.
    virtual ZORListValZORUnicodeString ReadStream(const ZORUnicodeString& iFileName) = 0;

    // The path with its first "$NAME", up to the next "/", replaced by the value of that
    // environment variable, and then the first "//", wherever it stands, by "/"; unchanged when the
    // variable is unset or empty. The value goes where the name's text first stands in the path,
    // even before the "$".
    virtual ZORUnicodeString SeekEnv(const ZORUnicodeString& iPath) = 0;
};

// A handle on it.
using ZORIDuxServices_var = ZORHandle<ZORIDuxServices>;

#pragma once

#include "ZORExport.h"

#include <string>
#include <string_view>

// A settings file as the text that it is, for an editor that people change it in.
//
//     ZORSettingText settings("DUXAdmin");
//     const std::string changed = Edited(settings.GetBytes());
//     settings.Check(changed); // raises, with line and column, when that is damaged
//     if (!settings.Replace(changed))
//         … // somebody else changed the file meanwhile: nothing was written
//
// Replacing has the guarantees of ZORSettingRepository::SaveRepository: the lock, the old file or
// the new one at any instant, links followed, mode and owner kept, nothing of another writer's
// lost. Other than there, the old text may be damaged: so it can be mended.
//
// Every operation raises a ZORSettingError that names the file and the step when that fails.
// Thread rule: one thread at a time for one text; process-wide: the environment is read when it is
// made, so none may change it meanwhile.
class ZOR_EXPORT ZORSettingText
{
public:
    // Reads the settings file (a name or a path with a "/", see ZORSettingRepository.h), damaged or
    // not; it need not exist. Raises an error when the name is null or empty, no directory is there
    // to keep it in, or the file cannot be read, is too large or no regular file.
    explicit ZORSettingText(const char* iName);

    // Its path, as the search for the settings file makes it. Lives as long as the object.
    const std::string& GetFile() const { return _File; }
    // The bytes of the file when it was read; none when it was not there. Live as long as the
    // object, until Replace.
    const std::string& GetBytes() const { return _Bytes; }

    // Raises an error, with line and column, when these bytes are no sound settings file.
    void Check(std::string_view iBytes) const;

    // Makes the bytes the text of the file, which is made when it is missing. False, and nothing is
    // written, when the file no longer holds GetBytes(). Raises an error, with the file as it was,
    // when the bytes are no sound settings file or a step fails. Waits up to 10 seconds for another
    // writer.
    bool Replace(std::string_view iBytes);

private:
    std::string _File;
    std::string _Bytes;
};

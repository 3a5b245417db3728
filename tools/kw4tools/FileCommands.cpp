// check, read, write: what may be done with a file, and its lines.

#include "Commands.h"
#include "Failure.h"
#include "Json.h"
#include "LineReader.h"
#include "Program.h"
#include "TraceRecording.h"

#include <cstring>

namespace
{

const char kGroup[] = "Files";

std::string AsLine(const ZORDuxFileAccess& iMay)
{
    return "exists=" + std::to_string(iMay.exists) + " readable=" + std::to_string(iMay.readable) +
           " writable=" + std::to_string(iMay.writable) +
           " executable=" + std::to_string(iMay.executable);
}

std::string AsJson(const std::string& iPath, const ZORDuxFileAccess& iMay)
{
    return Json::Object()
        .Add("path", iPath)
        .Add("exists", iMay.exists != 0)
        .Add("readable", iMay.readable != 0)
        .Add("writable", iMay.writable != 0)
        .Add("executable", iMay.executable != 0)
        .Text();
}

void AddCheck(Program& ioProgram)
{
    Command& check = ioProgram.Add(kGroup, "check", "Tell what you may do with a file");
    const std::string& path = check.Argument("PATH", "The file or directory", Completion::File);
    const bool& json = check.JsonFlag();
    check.Explains(
        "Prints a line like \"exists=1 readable=1 writable=0 executable=0\".\n"
        "Exit status 1 when it does not exist. As JSON: {\"path\":PATH,\"exists\":true,\n"
        "\"readable\":true,\"writable\":false,\"executable\":false}.");
    check.Example("kw4tools check /etc/passwd");
    check.Does([&](Session& ioSession) {
        const ZORDuxFileAccess may = ioSession.Services().CheckFile(Text(path));
        ioSession.Out().Line(json ? AsJson(path, may) : AsLine(may));
        return YesIf(may.exists);
    });
}

constexpr char kReadStream[] = "ZORDuxServices::ReadStream";
constexpr char kWriteStream[] = "ZORDuxServices::WriteStream";

// The notes that the stream operations write when something fails, as an administrator says it.
struct FailureNote {
    std::string_view method;
    std::string_view note;
    const char* meaning;
};
constexpr FailureNote kFailureNotes[] = {
    {kReadStream, "Open Stream: KO", "cannot be opened for reading"},
    {kReadStream, "Could not read data file", "cannot be read"},
    {kReadStream, "Close Stream: KO", "cannot be read to the end"},
    {kWriteStream, "Open Stream: KO", "cannot be opened for writing"},
    {kWriteStream, "Write Stream: KO", "cannot be written to the end"},
    {kWriteStream, "Close Stream: KO", "cannot be written to the end"},
};

// The stream operations tell by their trace alone why they failed, and reading even whether it did:
// raises the Failure that the lines tell of, if any.
void CheckTrace(const TraceRecording& iRecording, const std::string& iFile)
{
    for (const TraceRecording::Line& line : iRecording.Lines())
        for (const FailureNote& known : kFailureNotes)
            if (line.Of(known.method) == known.note)
                throw Failure("'" + iFile + "' " + known.meaning + ": " +
                              std::strerror(line.Error()));
}

ZORListValZORUnicodeString ReadLines(Session& ioSession, const std::string& iFile)
{
    ZORIDuxServices& services = ioSession.Services();
    TraceRecording recording;
    ZORListValZORUnicodeString lines = services.ReadStream(Text(iFile));
    recording.Stop();
    CheckTrace(recording, iFile);
    return lines;
}

void AddRead(Program& ioProgram)
{
    Command& read = ioProgram.Add(kGroup, "read", "Print a text file, or count its lines");
    const std::string& file = read.Argument("FILE", "The file", Completion::File);
    const bool& count = read.Flag("--count", "Print how many lines were read instead; a line of\n"
                                             "more than 1023 bytes counts as several");
    read.Explains("Prints the file byte for byte.");
    read.Example("kw4tools read /etc/hostname");
    read.Does([&](Session& ioSession) {
        const ZORListValZORUnicodeString lines = ReadLines(ioSession, file);
        if (count)
            ioSession.Out().Line(std::to_string(lines.Size()));
        else
            for (const ZORUnicodeString& line : lines)
                ioSession.Out().Bytes(View(line));
        return Status::Yes;
    });
}

ZORListValZORUnicodeString StandardInputLines()
{
    ZORListValZORUnicodeString lines;
    LineReader input("-");
    while (input.Next()) {
        if (input.Line().find('\0') != std::string_view::npos)
            throw Failure(input.Place() + " holds a NUL byte, which no text can");
        lines.Append(ZORUnicodeString(input.Line()));
    }
    return lines;
}

void AddWrite(Program& ioProgram)
{
    Command& write = ioProgram.Add(kGroup, "write", "Write standard input to a text file");
    const std::string& file =
        write.Argument("FILE", "The file; what is in it is replaced", Completion::File);
    write.Example("kw4tools write notes.txt < draft.txt");
    write.Does([&](Session& ioSession) {
        const ZORListValZORUnicodeString lines = StandardInputLines();
        ZORIDuxServices& services = ioSession.Services();
        TraceRecording recording;
        const int written = services.WriteStream(lines, Text(file));
        recording.Stop();
        CheckTrace(recording, file);
        if (!written)
            throw Failure("'" + file + "' cannot be written");
        return Status::Yes;
    });
}

} // namespace

void AddFileCommands(Program& ioProgram)
{
    AddCheck(ioProgram);
    AddRead(ioProgram);
    AddWrite(ioProgram);
}

#pragma once

#include "ZORClass.h"
#include "ZORErrDsc.h"
#include "ZORUnicodeString.h"

#include <iosfwd>
#include <string>
#include <vector>

// Root of the framework's errors: an identifier, parameters, a text and the places it was raised
// at.
//
//     auto* error = new ZORDuxServicesMsg(0x20002);
//     error->SetParameters(2, "ZORDuxServices", "ZORIDuxServices");
//     error->Throw("VirtualServices/KW4TOOLS.m/src/CreateServices", 41);
//
// and, to catch it:
//
//     try { … } catch (const ZORRaisedError& raised) { raised.Error().Display(1, std::cerr); }
//
// An object outside the ZORError family can be raised too: its class derives from ZORError to be
// carried, but its metaobject does not lead to "ZORError", and IsAKindOf says no.
//
// An error that is raised is made with `new`: what carries it counts references, and the last one
// destroys it. One on the stack may be filled and read, but never raised.
//
// The order of the virtual operations is part of the binary interface.
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORError : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // An error with that identifier, without parameters, text and history.
    explicit ZORError(unsigned int iId = 0);
    // Copies identifier, parameters, text and history; the copy is an error of its own.
    ZORError(const ZORError& iOther);
    // An error that was raised is what its history says; it does not turn into another one.
    ZORError& operator=(const ZORError&) = delete;
    ~ZORError() override;

    // The text for people. Form 0 is the text alone; any other form puts the error's identity
    // (class name and identifier) before it. The text is, in this order: the one given with
    // SetText; the one that GetErrorTable has for the identifier, with the parameters in its
    // places; a sentence that names class, file and line. Before a text of the table comes its
    // translation: the text of the identifier (in hexadecimal digits, as in 20002) in the catalog
    // named after the class, if that can be read (see ZORMsgCatalog.h).
    virtual ZORUnicodeString GetMessage(int iForm);
    // Writes GetMessage(iForm) and an end of line.
    virtual void Display(int iForm, std::ostream& oStream);
    // Writes one line for each place the error was raised at, oldest first, with class, file and
    // line. Nothing when it was never raised with a file.
    virtual void PrintHistory(std::ostream& oStream);
    // Raises this error: adds the place to its history when a file is given (not null), then throws
    // a ZORRaisedError that carries this very object. The first Throw takes over the reference that
    // `new` gave its creator, so `(new SomeError)->Throw(…)` leaks nothing; a later one adds a
    // reference. A class may override it to return instead. REQUIRES: the error was made with
    // `new`.
    virtual void Throw(const char* iFile, int iLine);
    // A new error that copies this one, with one reference, the caller's; null when there is no
    // memory.
    virtual ZORError* CloneSelf();
    // The messages of the error's class: *oCount of them from *oTable on, static. None here.
    // REQUIRES: neither argument is null.
    virtual void GetErrorTable(unsigned int* oCount, const ZORErrDsc** oTable);

    // Adds a place to the history without raising. A null file adds nothing. Returns this error.
    ZORError& Setup(const char* iFile, int iLine);
    // Replaces the parameters by the `iCount` texts that follow, each a const char* (null counts as
    // empty) and copied; none for a negative count. Returns this error.
    // REQUIRES: there are that many.
    ZORError& SetParameters(int iCount, ...);
    // Gives the error a text of its own (empty: takes it away). Returns this error.
    ZORError& SetText(const ZORUnicodeString& iText);

    // The identifier given at construction.
    unsigned int GetId() const { return _Id; }
    // The parameter of that 1-based number, or null when there is none; valid until SetParameters.
    const char* GetParameter(int iNumber) const;
    // Where the error was raised first: null and 0 when nowhere. The file is valid as long as the
    // error.
    const char* GetFile() const;
    int GetLine() const;

private:
    friend class ZORRaisedError;
    struct Place {
        std::string file;
        int line;
    };

    ZOR_HIDDEN std::string Identity() const;
    ZOR_HIDDEN std::string Text();
    ZOR_HIDDEN std::string RaisedAt(const Place& iPlace) const;

    unsigned int _Id;
    bool _Raised = false; // the creator's reference has gone to the first exception
    std::vector<std::string> _Parameters;
    ZORUnicodeString _Text;
    std::vector<Place> _History;
};

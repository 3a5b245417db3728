#pragma once

#include "ZORListValZORUnicodeString.h"
#include "ZORUnicodeString.h"

// The last message to be shown to the user: a tag and parameters, and the short and the long text
// that a message catalog makes of them.
//
//     ZORDuxMessenger* messenger = GetDuxMessenger();
//     messenger->Set("CDA_W_0001");
//     messenger->Add("plate");
//     ZORUnicodeString text;
//     messenger->GetShortMsg(text);                    // "The part plate is locked."
//     if (messenger->Ier() == 2) …                     // a warning
//
// The first three characters of a tag name its family and so its catalog (see ZORMsgCatalog.h):
//
//     CDA   ZORDUXCdaErrorMsg
//     PS_   ZORDUXPS_ErrorMsg
//     CFG   ZORDUXCfgErrorMsg
//     PNO   ZORDUXPnoErrorMsg
//
// and the three behind them, "_W_" or "_I_", make it a warning or an information; anything else is
// an error. The texts are those of the keys <tag>.Short and <tag>.Long, loaded when one of them is
// first asked for. Each takes the parameters in the order they were added, whatever the other
// needs; a place that they do not reach stays visible as it is written.
//
// Thread rule: one thread. GetDuxMessenger's is shared by the process; its first call may come from
// several threads at once.
class ZOR_EXPORT ZORDuxMessenger
{
public:
    // As after Reset.
    ZORDuxMessenger();
    virtual ~ZORDuxMessenger();
    ZORDuxMessenger(const ZORDuxMessenger&) = delete;
    ZORDuxMessenger& operator=(const ZORDuxMessenger&) = delete;

    // Begins a message: forgets the last one, parameters included, and classifies the tag.
    // Parameters are added behind this and before the texts are read.
    void Set(const ZORUnicodeString& iTag);
    // Takes two texts as they are, for an error (Ier is -1 from now on); no catalog is opened for
    // them. Tag and parameters stay as they were.
    void Set(const ZORUnicodeString& iShortMsg, const ZORUnicodeString& iLongMsg);

    // Adds a parameter. One that is added after the texts were loaded changes nothing.
    void Add(const ZORUnicodeString& iText);
    // A number as printf's "%g" writes it in the "C" locale: 3, but 1e+06 for a million
    // and 1.23457e+06 for 1234567.
    void Add(const int iNumber);
    // Adds nothing: callers number their parameters without these. Write a fraction as a text.
    void Add(const double& iNumber);

    // Loads the texts if need be, then makes `oText` the short or the long one. On an error `oText`
    // is as it was.
    void GetShortMsg(ZORUnicodeString& oText);
    void GetLongMsg(ZORUnicodeString& oText);

    // What the message is: 2 a warning, 1 an information, -1 an error or not known, 0 nothing yet.
    int Ier() const;

    // Forgets tag, texts and parameters.
    void Reset();

    // Loads the texts of the tag; does nothing when they are there. A tag of no known family gets
    // "DUX ERROR" and a sentence that names it, and Ier becomes -1. Raises a ZORMsgError when
    // catalog or key is missing or cannot be read: the texts are empty then, and stay so until the
    // next Set, without another look.
    void LoadMessage();

private:
    friend ZORDuxMessenger* GetDuxMessenger();

    static ZORDuxMessenger* _TheMessenger;

    int _Loaded;
    int _Ier;
    ZORUnicodeString _Tag;
    ZORUnicodeString _ShortMsg;
    ZORUnicodeString _LongMsg;
    ZORListValZORUnicodeString _Params;
};

// The messenger of the process, made on the first call and never destroyed; not the caller's.
ZOR_EXPORT ZORDuxMessenger* GetDuxMessenger();

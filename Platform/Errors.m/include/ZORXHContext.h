#pragma once

#include "ZORRaisedError.h"

// The context of a guarded block: open while the block runs, closed when it goes out of scope.
//
//     ZORXHContext context;
//     try {
//         …
//     } catch (const ZORRaisedError& raised) {
//         ZORError& error = context.Catch(raised);
//         …
//     }
//
// Contexts nest. Thread rule: each thread has contexts of its own.
class ZOR_EXPORT ZORXHContext
{
public:
    // Opens a context that holds no error.
    ZORXHContext();
    // Closes the context and releases the error it holds.
    ~ZORXHContext();
    ZORXHContext(const ZORXHContext&) = delete;
    ZORXHContext& operator=(const ZORXHContext&) = delete;

    // Holds the caught error, with a reference of its own, until Flush or the end of the context.
    ZORError& Catch(const ZORRaisedError& iRaised);
    // Releases the error held, if any.
    void Flush();

    // How many contexts are open in this thread.
    static int GetDepth();

private:
    ZORHandle<ZORError> _Error;
};

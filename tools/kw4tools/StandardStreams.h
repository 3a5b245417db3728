#pragma once

// Makes the standard streams safe to use. A stream that the caller closed is replaced by one that
// fails on every use, so that no file opened later takes its number and its traffic; a reader that
// goes away makes a write fail instead of ending the process.
void SecureStandardStreams();

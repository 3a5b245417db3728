#include "SearchPathAdvice.h"

#include "ZORDUXNLSError.h"

std::string SearchPathAdvice(ZORError& iError)
{
    // The check of a setting's name: what the services tell of it is a line of theirs.
    if (iError.IsAKindOf(ZORDUXNLSError::ClassName()))
        return "the search path cannot be read: an entry of the setting DUX_SEARCH_PATH in the "
               "settings file DUXAdmin is \"$$\" and no name; put one behind it, or take it out";
    return "the search path cannot be read: mend the setting DUX_SEARCH_PATH, or the settings "
           "file DUXAdmin, as the message above says";
}

// Dispatch by signals of libsigc++.
#include "events_signals.h"

#include <sigc++/sigc++.h>

namespace
{

const Rows kRows([] {
    for (const int subscribers : kSubscribers)
        DispatchRow(subscribers, "sigc++",
                    DispatchBySignal<sigc::signal<void, const char*, void*>>);
});

} // namespace

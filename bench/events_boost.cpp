// Dispatch by signals of Boost.
#include "events_signals.h"

#include <boost/signals2.hpp>

namespace
{

const Rows kRows([] {
    for (const int subscribers : kSubscribers)
        DispatchRow(subscribers, "Boost.Signals2",
                    DispatchBySignal<boost::signals2::signal<void(const char*, void*)>>);
});

} // namespace

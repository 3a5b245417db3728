#include "memory_rows.h"

#include <sigc++/sigc++.h>

namespace
{

using Signal = sigc::signal<void>;

const Rows kRows([] {
    SubscriberMemory(
        "sigc++", [] { return std::make_unique<Signal>(); },
        [](Signal& ioSender) { ioSender.connect([] { ++calls; }); },
        [](Signal& ioSender) { ioSender.emit(); });
});

} // namespace

// Dispatch by signals of Qt, whose senders stand in a hash by name.
#include "events_rows.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <memory>

namespace
{

class Sender : public QObject
{
    Q_OBJECT
signals:
    void Sent(const char* iEvent, void* iNotification);
};

void Dispatch(benchmark::State& ioState, int iSubscribers)
{
    long calls = 0;
    QHash<QByteArray, std::shared_ptr<Sender>> events;
    ForEachCallback(iSubscribers, [&](const std::string& iEvent) {
        std::shared_ptr<Sender>& sender = events[iEvent.c_str()];
        if (!sender)
            sender = std::make_shared<Sender>();
        QObject::connect(sender.get(), &Sender::Sent, [&calls](const char*, void*) { ++calls; });
    });
    for (auto _ : ioState) {
        const QByteArray event = kEvent;
        const auto found = events.constFind(event);
        if (found != events.constEnd())
            emit(*found)->Sent(event, nullptr);
    }
    Check(ioState, calls == ioState.iterations() * iSubscribers);
}

const Rows kRows([] {
    for (const int subscribers : kSubscribers)
        DispatchRow(subscribers, "Qt", Dispatch);
});

} // namespace

#include "events_qt.moc"

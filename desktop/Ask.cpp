#include "desktop/Ask.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace tessary::desktop {

void ask(const QDBusConnection& bus, const QDBusMessage& question, QObject* asker,
         std::function<void(const QDBusMessage& answer)> take)
{
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), asker);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, asker, [watcher, take = std::move(take)] {
        watcher->deleteLater();
        take(watcher->reply());
    });
}

} // namespace tessary::desktop

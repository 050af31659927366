#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

#include <functional>

class QObject;

namespace tessary::desktop {

/// Sends the question. Its answer, which may be an error, comes from the event loop, unless the asker is gone
/// by then.
void ask(const QDBusConnection& bus, const QDBusMessage& question, QObject* asker,
         std::function<void(const QDBusMessage& answer)> take);

} // namespace tessary::desktop

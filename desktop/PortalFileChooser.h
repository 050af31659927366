#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <QVariant>
#include <QVariantMap>

class QWindow;

namespace tessary::desktop {

/// Lets the person choose one file in the dialog of the desktop's portal. Nothing is asked of the portal
/// before the first dialog; all answers come from the event loop. The dialog goes with this object.
class PortalFileChooser : public QObject
{
    Q_OBJECT

public:
    explicit PortalFileChooser(QDBusConnection bus = QDBusConnection::sessionBus(),
                               QObject* parent = nullptr);
    ~PortalFileChooser() override;
    Q_DISABLE_COPY_MOVE(PortalFileChooser)

    /// False where the toolkit's own dialog is the desktop's already: the person has chosen a platform theme,
    /// or the desktop's is installed.
    [[nodiscard]] static bool isWanted();

    /// Opens the dialog above the window; does nothing while one is open. Ends in exactly one of the signals,
    /// in unavailable() within 1.5 s when no dialog has come up by then.
    void open(const QWindow* window, const QString& title);

    [[nodiscard]] bool isOpen() const { return m_timer.isActive() || !m_request.isEmpty(); }

Q_SIGNALS:
    /// What was answered, unexamined.
    void chosen(const QUrl& file);
    /// Closed without a choice, or the portal is gone.
    void dismissed();
    /// No portal offers file dialogs here.
    void unavailable();

private Q_SLOTS:
    void takeResponse(uint response, const QVariantMap& results);

private:
    using Answered = void (PortalFileChooser::*)(const QVariant& answer);

    /// Asks the portal; an answer that comes after the dialog was given up is dropped.
    void askPortal(const QDBusMessage& question, Answered answered);
    void takeVersion(const QVariant& version);
    void takeRequest(const QVariant& request);
    /// @param request empty for none any more
    void listen(const QString& request);
    void giveUp();
    void reset();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_portal;
    QTimer m_timer{this}; ///< runs from the call to the dialog's coming up
    QString m_window;
    QString m_title;
    QString m_request; ///< the dialog's object, once it is up
    uint m_round{};    ///< counts dialogs; tells a late answer
};

} // namespace tessary::desktop

#include "tests/support/accessibleevents.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QUuid>

AccessibleEvents::AccessibleEvents()
    : _bus(QString())
    , _busName(QUuid::createUuid().toString())
{
    const QDBusReply<QString> address = QDBusConnection::sessionBus().call(
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
    _bus = QDBusConnection::connectToBus(address.value(), _busName);
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/registry"),
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("RegisterEvent"));
    question.setArguments({QStringLiteral("object:")});
    const QString events = QStringLiteral("org.a11y.atspi.Event.Object");
    _isListening = _bus.call(question).type() == QDBusMessage::ReplyMessage &&
                   _bus.connect({}, {}, events, QStringLiteral("Announcement"), this,
                                SLOT(onAnnouncement(QDBusMessage))) &&
                   _bus.connect({}, {}, events, QStringLiteral("PropertyChange"), this,
                                SLOT(onPropertyChange(QDBusMessage)));
}

AccessibleEvents::~AccessibleEvents()
{
    QDBusConnection::disconnectFromBus(_busName);
}

void AccessibleEvents::onAnnouncement(const QDBusMessage &event)
{
    _announcements << event.arguments().value(3).value<QDBusVariant>().variant().toString();
}

// The event itself does not contain the new name.
void AccessibleEvents::onPropertyChange(const QDBusMessage &event)
{
    if (event.arguments().value(0) != QLatin1String("accessible-name"))
        return;
    QDBusMessage question = QDBusMessage::createMethodCall(event.service(), event.path(),
                                                           QStringLiteral("org.freedesktop.DBus.Properties"),
                                                           QStringLiteral("Get"));
    question.setArguments({QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("Name")});
    const QDBusReply<QDBusVariant> name = _bus.call(question);
    _changedNames << name.value().variant().toString();
}

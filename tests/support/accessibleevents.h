#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QObject>
#include <QStringList>
#include <QUuid>

/// Listens on the accessibility bus as a screen reader does. A program sends most of its events only if there
/// is a listener, so create this object before the program starts.
class AccessibleEvents : public QObject
{
    Q_OBJECT

public:
    AccessibleEvents()
    {
        const QDBusReply<QString> address = QDBusConnection::sessionBus().call(
            QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"));
        _bus = QDBusConnection::connectToBus(address.value(), _busName);
        auto request = QDBusMessage::createMethodCall("org.a11y.atspi.Registry", "/org/a11y/atspi/registry",
                                                      "org.a11y.atspi.Registry", "RegisterEvent");
        request.setArguments({"object:"});
        const QString events = QStringLiteral("org.a11y.atspi.Event.Object");
        _isListening =
            _bus.call(request).type() == QDBusMessage::ReplyMessage &&
            _bus.connect({}, {}, events, "Announcement", this, SLOT(onAnnouncement(QDBusMessage))) &&
            _bus.connect({}, {}, events, "PropertyChange", this, SLOT(onPropertyChange(QDBusMessage)));
    }
    ~AccessibleEvents() override { QDBusConnection::disconnectFromBus(_busName); }

    /// Returns false if the bus cannot be reached or does not accept the registration.
    bool isListening() const { return _isListening; }
    /// The announcements that programs have requested so far, in order.
    const QStringList &announcements() const { return _announcements; }
    /// The new names of labels and other widgets so far, in order.
    const QStringList &changedNames() const { return _changedNames; }

private Q_SLOTS:
    void onAnnouncement(const QDBusMessage &event)
    {
        _announcements << event.arguments().value(3).value<QDBusVariant>().variant().toString();
    }
    // The event itself does not contain the new name.
    void onPropertyChange(const QDBusMessage &event)
    {
        if (event.arguments().value(0) != QLatin1String("accessible-name"))
            return;
        auto request = QDBusMessage::createMethodCall(event.service(), event.path(),
                                                      "org.freedesktop.DBus.Properties", "Get");
        request.setArguments({"org.a11y.atspi.Accessible", "Name"});
        const QDBusReply<QDBusVariant> name = _bus.call(request);
        _changedNames << name.value().variant().toString();
    }

private:
    const QString _busName = QUuid::createUuid().toString();
    QDBusConnection _bus{QString()};
    bool _isListening = false;
    QStringList _announcements;
    QStringList _changedNames;
};

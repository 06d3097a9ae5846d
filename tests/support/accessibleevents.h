#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

class QDBusMessage;

/// Listens on the accessibility bus as a screen reader does. A program sends most of its events only while
/// they are asked for, so make this before the program starts.
class AccessibleEvents : public QObject
{
    Q_OBJECT

public:
    AccessibleEvents();
    ~AccessibleEvents() override;

    /// False if the bus could not be reached.
    bool isListening() const { return _isListening; }
    /// What programs have asked to be spoken so far, in order.
    const QStringList &announcements() const { return _announcements; }
    /// The new texts of labels and of whatever else has changed its name so far, in order.
    const QStringList &changedNames() const { return _changedNames; }

private Q_SLOTS:
    void onAnnouncement(const QDBusMessage &event);
    void onPropertyChange(const QDBusMessage &event);

private:
    QDBusConnection _bus;
    QString _busName;
    bool _isListening = false;
    QStringList _announcements;
    QStringList _changedNames;
};

#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

class QDBusMessage;

/// Listens on the accessibility bus as a screen reader does. A program sends most of its events only if there
/// is a listener, so create this object before the program starts.
class AccessibleEvents : public QObject
{
    Q_OBJECT

public:
    AccessibleEvents();
    ~AccessibleEvents() override;

    /// Returns false if the bus cannot be reached.
    bool isListening() const { return _isListening; }
    /// The announcements that programs have requested so far, in order.
    const QStringList &announcements() const { return _announcements; }
    /// The new names of labels and other widgets so far, in order.
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

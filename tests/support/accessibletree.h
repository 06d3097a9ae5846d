#pragma once

#include "tests/support/widget.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QHash>

#include <optional>

/// Reads what a program shows from the accessibility bus.
///
/// It uses the D-Bus protocol directly, because client libraries cache what they have read: here every read
/// is fresh. All requests for one level of the tree are sent before the first reply is awaited. A slow
/// program therefore causes a few waits, not a few hundred.
class AccessibleTree
{
public:
    /// Connects to the accessibility bus of the session that the environment names.
    AccessibleTree();
    ~AccessibleTree();
    Q_DISABLE_COPY_MOVE(AccessibleTree)

    /// What the program with process id \a pid shows now; null while it is not on the bus or does not reply.
    std::optional<Screen> read(qint64 pid);
    /// Makes the program perform the action of \a widget, such as pressing a button or selecting a row. \a
    /// widget is from the last read(). Returns false if it is gone or has no action.
    bool act(const Widget &widget) const;
    /// Makes the program replace the contents of the field \a widget, which is from the last read(), with \a
    /// text. Returns false if it is gone.
    bool setText(const Widget &widget, const QString &text) const;
    /// Why the bus cannot be reached; empty if it can.
    QString error() const { return _error; }

private:
    struct Object;
    struct PendingRequests;

    QDBusPendingCall callAsync(const QString &path, const QString &interface, const QString &method,
                               const QVariantList &arguments = {}) const;
    PendingRequests requestsFor(const QString &path) const;
    bool findProgram(qint64 pid);
    void readLevel(Screen &screen, QList<Object> &objects, int first);
    void readRectsAndTexts(Screen &screen, const QList<Object> &objects) const;

    QDBusConnection _bus;
    QString _busName; ///< of this object's own connection
    QString _error;
    qint64 _pid = 0;  ///< the program that _service belongs to
    QString _service; ///< the program's name on the bus
    QHash<QString, uint>
        _roles; ///< of the program's widgets seen so far: neither roles nor paths ever change
};

#pragma once

#include "tests/support/widget.h"

#include <QDBusConnection>
#include <QDBusObjectPath>

#include <optional>

/// Reads what a program shows from the accessibility bus.
///
/// It speaks the bus's own protocol instead of using a client library, because such a library remembers what
/// it once read: here every read is fresh. All questions about one level of the tree are asked before the
/// first answer is awaited, so a program that is held up now and then is waited for a few times and not a few
/// hundred times.
class AccessibleTree
{
public:
    /// Connects to the accessibility bus of the session named by the environment.
    AccessibleTree();
    ~AccessibleTree();
    Q_DISABLE_COPY_MOVE(AccessibleTree)

    /// What the program with process id \a pid shows now; null while it is not on the bus or does not answer.
    std::optional<Screen> read(qint64 pid);
    /// Has the program do what it offers for \a widget, such as to press a button or to select a row. \a
    /// widget is one of the last read(). False if it is gone or offers nothing.
    bool act(const Widget &widget) const;
    /// Has the program put \a text in place of what the field \a widget of the last read() holds. False if it
    /// is gone.
    bool setText(const Widget &widget, const QString &text) const;
    /// Why the bus could not be reached; empty if it could.
    QString error() const { return _error; }

private:
    struct Object;
    struct Questions;

    QDBusPendingCall ask(const QString &path, const QString &interface, const QString &method,
                         const QVariantList &arguments = {}) const;
    Questions questionsAbout(const QString &path) const;
    bool findProgram(qint64 pid);
    void readLevel(Screen &screen, QList<Object> &objects, int first) const;
    void readRectsAndTexts(Screen &screen, const QList<Object> &objects) const;

    QDBusConnection _bus;
    QString _busName; ///< of this object's own connection
    QString _error;
    qint64 _pid = 0;  ///< the program that _service belongs to
    QString _service; ///< the program's name on the bus
};

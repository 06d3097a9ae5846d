#pragma once

#include <QImage>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>

struct _XDisplay;

/// One window as the window manager has it.
struct XWindow {
    unsigned long id = 0;    ///< the program's own window
    unsigned long frame = 0; ///< the child of the root window it is in: the manager's frame, or itself
    QString title;
    QRect rect;      ///< in screen coordinates, without the frame
    QRect frameRect; ///< in screen coordinates, with the frame
    qint64 pid = 0;  ///< the program's process id; 0 if it does not tell
};

/// The X display named by DISPLAY: its windows, and pictures of them.
class XDisplay
{
public:
    XDisplay();
    ~XDisplay();
    Q_DISABLE_COPY_MOVE(XDisplay)

    /// False if there is no such display; nothing else may be called then.
    bool isOpen() const { return _display != nullptr; }
    /// The connection, for XInput.
    _XDisplay *connection() const { return _display; }

    /// The managed windows of the program with process id \a pid, the lowest first.
    QList<XWindow> windowsOf(qint64 pid) const;
    /// The window that has the keyboard; its id is 0 if none has.
    XWindow activeWindow() const;
    /// The uppermost window at \a point: a frame, or an unmanaged one like an open menu; 0 if there is none.
    unsigned long frameAt(const QPoint &point) const;

    /// Asks the window manager to bring the window \a id to the front, as its entry in a task bar does.
    void activate(unsigned long id) const;
    /// Asks the window manager to close the window \a id, as the button in its frame does.
    void close(unsigned long id) const;
    /// Asks the window manager a question. The answer follows all input given before: a click reaches a
    /// window only when the manager has had a look at it.
    void askManager() const;
    /// Whether the window manager has answered.
    bool hasManagerAnswered() const;
    /// Sends the program of the window \a id a ping. The answer follows all input sent to that window before.
    void ping(unsigned long id);
    /// Whether the last ping was answered, or cannot be any more because its window is gone.
    bool isPingAnswered();

    /// The pointer's image at this moment; the server animates some of them.
    QImage pointerImage() const;
    /// Has the server report each change of the pointer's image to this connection from now on.
    void watchPointer();
    /// Whether the server has reported a change.
    bool hasPointerChanged();
    /// A picture of \a rect of the screen; of all of it if \a rect is empty.
    QImage picture(const QRect &rect = {}) const;

private:
    QList<unsigned long> numbers(unsigned long window, const char *property) const;
    QString text(unsigned long window, const char *property) const;
    XWindow describe(unsigned long window) const;
    void tell(unsigned long receiver, unsigned long window, const char *message, long mask,
              const QList<long> &data) const;

    _XDisplay *_display;
    unsigned long _root = 0;
    unsigned long _own = 0; ///< a window nobody sees, to ask the window manager about
    unsigned long _pinged = 0;
    long _pingNumber = 0;
};

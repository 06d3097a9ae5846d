#pragma once

#include <QImage>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>

struct _XDisplay;

/// A window as the window manager knows it.
struct XWindow {
    unsigned long id = 0; ///< the program's own window
    unsigned long frame =
        0; ///< the child of the root window that contains it: the manager's frame, or the window itself
    QString title;
    QRect rect;      ///< in screen coordinates, without the frame
    QRect frameRect; ///< in screen coordinates, with the frame
    qint64 pid = 0;  ///< the program's process id; 0 if the program does not report it
};

/// The X display named by DISPLAY: its windows and screenshots.
class XDisplay
{
public:
    XDisplay();
    ~XDisplay();
    Q_DISABLE_COPY_MOVE(XDisplay)

    /// Returns false if there is no such display; then no other function may be called.
    bool isOpen() const { return _display != nullptr; }
    /// The connection, for XInput.
    _XDisplay *connection() const { return _display; }

    /// The managed windows of the program with process id \a pid, the lowest first.
    QList<XWindow> windowsOf(qint64 pid) const;
    /// The window that has the keyboard focus; its id is 0 if no window has it.
    XWindow activeWindow() const;
    unsigned long activeWindowId() const;
    /// The topmost window at \a point: a frame, or an unmanaged one such as an open menu; 0 if there is none.
    unsigned long frameAt(const QPoint &point) const;

    /// Asks the window manager to bring the window \a id to the front, as its entry in a task bar does.
    void activate(unsigned long id) const;
    /// Asks the window manager to close the window \a id, as the button in its frame does.
    void close(unsigned long id) const;
    /// Sends a request to the window manager. The reply follows all input sent before: a click reaches a
    /// window only after the window manager has processed it.
    void pingManager() const;
    /// Returns true if the window manager has replied.
    bool isManagerPingAnswered() const;
    /// Sends a ping to the program of the window \a id. The reply follows all input sent to that window
    /// before.
    void ping(unsigned long id);
    /// Returns true if the last ping was answered, or cannot be answered because its window is gone.
    bool isPingAnswered();

    /// The current image of the pointer; the server animates some pointers.
    QImage pointerImage() const;
    /// From now on, the server reports each change of the pointer's image to this connection.
    void watchPointer();
    /// Returns true if the server has reported a change since then.
    bool hasPointerChanged();
    /// A screenshot of \a rect; of the whole screen if \a rect is empty.
    QImage screenshot(const QRect &rect = {}) const;

private:
    QList<unsigned long> numbers(unsigned long window, const char *property) const;
    QString text(unsigned long window, const char *property) const;
    XWindow describe(unsigned long window) const;
    void sendMessage(unsigned long receiver, unsigned long window, const char *message, long mask,
                     const QList<long> &data) const;

    _XDisplay *_display;
    unsigned long _root = 0;
    unsigned long _own = 0; ///< an invisible window, used for requests to the window manager
    unsigned long _pinged = 0;
    long _pingNumber = 0;
    bool _hasPointerChanged = false;
};

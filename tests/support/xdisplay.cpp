#include "tests/support/xdisplay.h"

// Must come last: Xlib's macros collide with Qt's names.
#include <X11/extensions/Xfixes.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace
{

/// A window may disappear between two requests about it. That must not end the test program.
int ignoreError(Display *, XErrorEvent *)
{
    return 0;
}

/// The value of a property of a window; the destructor frees it.
struct Property {
    Property(Display *display, Window window, const char *name)
    {
        Atom type = None;
        unsigned long rest = 0;
        constexpr long maxItems = 4096; // 32-bit items, more than any property here has
        XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, maxItems, False,
                           AnyPropertyType, &type, &format, &count, &rest, &data);
    }
    ~Property()
    {
        if (data)
            XFree(data);
    }
    Q_DISABLE_COPY_MOVE(Property)

    int format = 0; ///< bits of an item; 0 if there is no such property
    unsigned long count = 0;
    unsigned char *data = nullptr;
};

} // namespace

XDisplay::XDisplay()
    : _display(XOpenDisplay(nullptr))
{
    XSetErrorHandler(ignoreError);
    if (!_display)
        return;
    _root = DefaultRootWindow(_display);
    _own = XCreateSimpleWindow(_display, _root, 0, 0, 1, 1, 0, 0, 0);
}

XDisplay::~XDisplay()
{
    if (_display)
        XCloseDisplay(_display);
}

QList<unsigned long> XDisplay::numbers(unsigned long window, const char *property) const
{
    const Property found(_display, window, property);
    if (found.format != 32)
        return {};
    const auto *values =
        reinterpret_cast<const unsigned long *>(found.data); // Xlib stores each 32-bit item in a long
    return {values, values + found.count};
}

QString XDisplay::text(unsigned long window, const char *property) const
{
    const Property found(_display, window, property);
    return found.format == 8
               ? QString::fromUtf8(reinterpret_cast<const char *>(found.data), qsizetype(found.count))
               : QString();
}

XWindow XDisplay::describe(unsigned long window) const
{
    XWindow result;
    XWindowAttributes attributes;
    int x = 0;
    int y = 0;
    Window ignored = None;
    if (!XGetWindowAttributes(_display, window, &attributes) ||
        !XTranslateCoordinates(_display, window, _root, 0, 0, &x, &y, &ignored))
        return result;
    result.id = window;
    result.rect = QRect(x, y, attributes.width, attributes.height);
    result.title = text(window, "_NET_WM_NAME");
    result.pid = qint64(numbers(window, "_NET_WM_PID").value(0));
    const QList<unsigned long> edges = numbers(window, "_NET_FRAME_EXTENTS");
    result.frameRect = result.rect.adjusted(-int(edges.value(0)), -int(edges.value(2)), int(edges.value(1)),
                                            int(edges.value(3)));
    for (Window parent = window; parent != _root && parent != None;) {
        result.frame = parent;
        Window root = None;
        Window *children = nullptr;
        unsigned int count = 0;
        if (!XQueryTree(_display, parent, &root, &parent, &children, &count))
            break;
        XFree(children);
    }
    return result;
}

QList<XWindow> XDisplay::windowsOf(qint64 pid) const
{
    QList<XWindow> result;
    for (unsigned long id : numbers(_root, "_NET_CLIENT_LIST_STACKING")) {
        const XWindow window = describe(id);
        if (window.id && window.pid == pid)
            result << window;
    }
    return result;
}

unsigned long XDisplay::activeWindowId() const
{
    return numbers(_root, "_NET_ACTIVE_WINDOW").value(0);
}

XWindow XDisplay::activeWindow() const
{
    const unsigned long id = activeWindowId();
    return id ? describe(id) : XWindow();
}

unsigned long XDisplay::frameAt(const QPoint &point) const
{
    int x = 0;
    int y = 0;
    Window child = None;
    XTranslateCoordinates(_display, _root, _root, point.x(), point.y(), &x, &y, &child);
    return child;
}

void XDisplay::sendMessage(unsigned long receiver, unsigned long window, const char *message, long mask,
                           const QList<long> &data) const
{
    XEvent event = {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(_display, message, False);
    event.xclient.format = 32;
    for (int i = 0; i < data.size(); ++i)
        event.xclient.data.l[i] = data.at(i);
    XSendEvent(_display, receiver, False, mask, &event);
    XFlush(_display);
}

void XDisplay::activate(unsigned long id) const
{
    constexpr long fromPager = 2;
    sendMessage(_root, id, "_NET_ACTIVE_WINDOW", SubstructureRedirectMask | SubstructureNotifyMask,
                {fromPager});
}

void XDisplay::close(unsigned long id) const
{
    constexpr long fromPager = 2;
    sendMessage(_root, id, "_NET_CLOSE_WINDOW", SubstructureRedirectMask | SubstructureNotifyMask,
                {0, fromPager});
}

void XDisplay::pingManager() const
{
    XDeleteProperty(_display, _own, XInternAtom(_display, "_NET_FRAME_EXTENTS", False));
    sendMessage(_root, _own, "_NET_REQUEST_FRAME_EXTENTS", SubstructureRedirectMask | SubstructureNotifyMask,
                {});
}

bool XDisplay::isManagerPingAnswered() const
{
    return !numbers(_own, "_NET_FRAME_EXTENTS").isEmpty();
}

void XDisplay::ping(unsigned long id)
{
    // The reply is an event on the root window. Qt delivers such an event only to clients that listen for
    // structure changes of it.
    XSelectInput(_display, _root, StructureNotifyMask | SubstructureNotifyMask);
    _pinged = id;
    ++_pingNumber;
    sendMessage(id, id, "WM_PROTOCOLS", NoEventMask,
                {long(XInternAtom(_display, "_NET_WM_PING", False)), _pingNumber, long(id)});
}

bool XDisplay::isPingAnswered()
{
    bool answered = _pinged == 0 || describe(_pinged).id == 0;
    while (XPending(_display)) {
        XEvent event;
        XNextEvent(_display, &event);
        answered |= event.type == ClientMessage &&
                    Atom(event.xclient.data.l[0]) == XInternAtom(_display, "_NET_WM_PING", False) &&
                    event.xclient.data.l[1] == _pingNumber && event.xclient.data.l[2] == long(_pinged);
    }
    if (answered) {
        _pinged = 0;
        XSelectInput(_display, _root, NoEventMask);
    }
    return answered;
}

QImage XDisplay::pointerImage() const
{
    XFixesCursorImage *cursor = XFixesGetCursorImage(_display);
    if (!cursor)
        return {};
    QImage image(cursor->width, cursor->height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto pixel = QRgb(cursor->pixels[y * image.width() + x]); // one in each long
            reinterpret_cast<QRgb *>(image.scanLine(y))[x] = pixel;
        }
    }
    XFree(cursor);
    return image;
}

void XDisplay::watchPointer()
{
    _hasPointerChanged = false;
    XFixesSelectCursorInput(_display, _root, XFixesDisplayCursorNotifyMask);
    XSync(_display, False);
}

bool XDisplay::hasPointerChanged()
{
    int firstEvent = 0;
    int firstError = 0;
    XFixesQueryExtension(_display, &firstEvent, &firstError);
    XEvent event;
    if (XCheckTypedEvent(_display, firstEvent + XFixesCursorNotify, &event))
        _hasPointerChanged = true;
    return _hasPointerChanged;
}

QImage XDisplay::screenshot(const QRect &rect) const
{
    XWindowAttributes root;
    XGetWindowAttributes(_display, _root, &root);
    const QRect screen(0, 0, root.width, root.height);
    const QRect area = rect.isEmpty() ? screen : rect & screen;
    XImage *image = XGetImage(_display, _root, area.x(), area.y(), unsigned(area.width()),
                              unsigned(area.height()), AllPlanes, ZPixmap);
    if (!image)
        return {};
    // The desktop's screen has 24-bit colour. X returns it in 32 bits, in the format that Qt uses.
    QImage result;
    if (image->bits_per_pixel == 32) {
        result = QImage(reinterpret_cast<const uchar *>(image->data), image->width, image->height,
                        image->bytes_per_line, QImage::Format_RGB32)
                     .copy();
    }
    XDestroyImage(image);
    return result;
}

#include "tests/support/xinput.h"

#include "tests/support/xdisplay.h"

#include <QStringList>

#include <cstddef>
#include <utility>

// Must come last: Xlib's macros collide with Qt's names.
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace
{

enum Button : unsigned { LeftButton = 1, WheelUp = 4, WheelDown = 5 };

/// The X key symbol of a character.
KeySym symbolOf(char32_t character)
{
    if (character == U'\n')
        return XK_Return;
    if (character == U'\t')
        return XK_Tab;
    const bool isLatin1 =
        (character >= 0x20 && character <= 0x7e) || (character >= 0xa0 && character <= 0xff);
    return isLatin1 ? KeySym(character) : KeySym(0x01000000 | character);
}

/// The X key symbol of a key by its common name; NoSymbol if there is none.
KeySym symbolOf(const QString &name)
{
    static const QHash<QString, KeySym> names = {
        {"ctrl", XK_Control_L},      {"shift", XK_Shift_L},  {"alt", XK_Alt_L},         {"space", XK_space},
        {"backspace", XK_BackSpace}, {"pageup", XK_Page_Up}, {"pagedown", XK_Page_Down}};
    const KeySym known = names.value(name.toLower(), NoSymbol);
    if (known != NoSymbol)
        return known;
    return name.size() == 1 ? symbolOf(char32_t(name.at(0).unicode()))
                            : XStringToKeysym(name.toLatin1().constData());
}

} // namespace

XInput::XInput(const XDisplay &display, std::function<void()> settle)
    : _display(display)
    , _settle(std::move(settle))
{
    readKeyboard();
    XAutoRepeatOff(_display.connection()); // a late release on a busy machine must not repeat a letter
    // The first event of the test keyboard makes programs read the keyboard map again: that event must have
    // no effect.
    key(_shift, true);
    key(_shift, false);
}

XInput::~XInput()
{
    giveBack();
}

void XInput::readKeyboard()
{
    _keys.clear();
    _spare.clear();
    int first = 0;
    int last = 0;
    int columns = 0;
    XDisplayKeycodes(_display.connection(), &first, &last);
    KeySym *symbols = XGetKeyboardMapping(_display.connection(), KeyCode(first), last - first + 1, &columns);
    for (int code = last; code >= first; --code) {
        const KeySym *columnsOfKey = symbols + std::ptrdiff_t{code - first} * columns;
        bool isSpare = true;
        for (int column = 0; column < columns; ++column)
            isSpare &= columnsOfKey[column] == NoSymbol;
        if (isSpare)
            _spare << KeyCode(code);
        // Iterates downwards over the codes, so that the main keys take precedence over the number pad.
        if (columns > 1 && columnsOfKey[1] != NoSymbol)
            _keys.insert(columnsOfKey[1], {KeyCode(code), columnsOfKey[1] != columnsOfKey[0]});
        if (columnsOfKey[0] != NoSymbol)
            _keys.insert(columnsOfKey[0], {KeyCode(code), false});
    }
    XFree(symbols);
    _shift = _keys.value(XK_Shift_L).code;
}

void XInput::assign(unsigned char code, unsigned long symbol)
{
    // Both with and without shift: with only one of them, a capital would become its small letter.
    KeySym both[] = {symbol, symbol};
    XChangeKeyboardMapping(_display.connection(), code, 2, both, 1);
}

/// Assigns \a symbol to a spare key. There must be one.
void XInput::lend(unsigned long symbol)
{
    const unsigned char code = _spare.takeFirst();
    assign(code, symbol);
    _lent << code;
    _keys.insert(symbol, {code, false});
}

void XInput::giveBack()
{
    for (unsigned char code : std::as_const(_lent))
        assign(code, NoSymbol);
    _lent.clear();
    XSync(_display.connection(), False);
}

void XInput::key(unsigned char code, bool down)
{
    XTestFakeKeyEvent(_display.connection(), code, down, CurrentTime);
    XFlush(_display.connection());
}

void XInput::button(unsigned number, bool down)
{
    XTestFakeButtonEvent(_display.connection(), number, down, CurrentTime);
}

void XInput::send()
{
    XFlush(_display.connection());
}

void XInput::movePointer(const QPoint &point)
{
    XTestFakeMotionEvent(_display.connection(), -1, point.x(), point.y(), CurrentTime);
    send();
}

void XInput::press()
{
    button(LeftButton, true);
    send();
}

void XInput::release()
{
    button(LeftButton, false);
    send();
}

void XInput::click()
{
    button(LeftButton, true);
    button(LeftButton, false);
    send();
}

void XInput::doubleClick()
{
    // All events are sent at once: if this process were delayed in between, they would be two clicks.
    for (const bool down : {true, false, true, false})
        button(LeftButton, down);
    send();
}

void XInput::turnWheel(int steps)
{
    for (int i = 0; i < qAbs(steps); ++i) {
        button(steps > 0 ? WheelDown : WheelUp, true);
        button(steps > 0 ? WheelDown : WheelUp, false);
    }
    send();
}

void XInput::strike(const Key &stroke)
{
    if (stroke.shift)
        key(_shift, true);
    key(stroke.code, true);
    key(stroke.code, false);
    if (stroke.shift)
        key(_shift, false);
}

bool XInput::typeText(const QString &text)
{
    readKeyboard();
    // A program looks up the meaning of a key when it processes the key, which may be late. All keys are
    // therefore assigned before the first one is pressed, and a key gets another meaning only after
    // everything typed has arrived.
    QList<unsigned long> waiting;
    for (char32_t character : text.toUcs4()) {
        const unsigned long symbol = symbolOf(character);
        if (!_keys.contains(symbol) && _spare.isEmpty()) {
            strikeAll(waiting);
            waiting.clear();
            _settle();
            giveBack();
            readKeyboard();
            if (_spare.isEmpty())
                return false;
        }
        if (!_keys.contains(symbol))
            lend(symbol);
        waiting << symbol;
    }
    strikeAll(waiting);
    return true;
}

void XInput::strikeAll(const QList<unsigned long> &symbols)
{
    XSync(_display.connection(), False);
    for (unsigned long symbol : symbols)
        strike(_keys.value(symbol));
}

bool XInput::pressKey(const QString &name)
{
    // "ctrl++" is the plus key with Ctrl.
    QStringList parts = name.split(u'+');
    if (name.endsWith(u'+'))
        parts = name.chopped(1).split(u'+', Qt::SkipEmptyParts) << QStringLiteral("+");
    QList<Key> keys;
    for (const QString &part : std::as_const(parts)) {
        keys << _keys.value(symbolOf(part));
        if (!keys.last().code)
            return false;
    }
    const Key last = keys.takeLast();
    for (const Key &modifier : std::as_const(keys))
        key(modifier.code, true);
    strike(last);
    while (!keys.isEmpty())
        key(keys.takeLast().code, false);
    return true;
}

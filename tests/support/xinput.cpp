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

/// The X key symbol of a character.
KeySym symbolOf(char32_t character)
{
    const bool isLatin1 =
        (character >= 0x20 && character <= 0x7e) || (character >= 0xa0 && character <= 0xff);
    return isLatin1 ? KeySym(character) : KeySym(0x01000000 | character);
}

/// The X key symbol of a key by its common name; NoSymbol if there is none.
KeySym symbolOf(const QString &name)
{
    static const QHash<QString, KeySym> modifiers = {
        {"ctrl", XK_Control_L}, {"shift", XK_Shift_L}, {"alt", XK_Alt_L}};
    return modifiers.value(name, XStringToKeysym(name.toLatin1().constData()));
}

} // namespace

XInput::XInput(const XDisplay &display)
    : _display(display)
{
    readKeyboard();
    XAutoRepeatOff(_display.connection()); // a late release on a busy machine must not repeat a letter
    // The first event of the test keyboard makes programs read the keyboard map again. Shift alone has no
    // other effect.
    key(_shift, true);
    key(_shift, false);
}

void XInput::readKeyboard()
{
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

/// Assigns \a symbol to a spare key. Returns false if there is none.
bool XInput::assignKey(unsigned long symbol)
{
    if (_spare.isEmpty())
        return false;
    const unsigned char code = _spare.takeFirst();
    // Both with and without shift: with only one of them, a capital would become its small letter.
    KeySym both[] = {symbol, symbol};
    XChangeKeyboardMapping(_display.connection(), code, 2, both, 1);
    _keys.insert(symbol, {code, false});
    return true;
}

void XInput::key(unsigned char code, bool down)
{
    XTestFakeKeyEvent(_display.connection(), code, down, CurrentTime);
    XFlush(_display.connection());
}

void XInput::button(bool down)
{
    constexpr unsigned leftButton = 1;
    XTestFakeButtonEvent(_display.connection(), leftButton, down, CurrentTime);
}

void XInput::movePointer(const QPoint &point)
{
    XTestFakeMotionEvent(_display.connection(), -1, point.x(), point.y(), CurrentTime);
    XFlush(_display.connection());
}

void XInput::press()
{
    button(true);
    XFlush(_display.connection());
}

void XInput::release()
{
    button(false);
    XFlush(_display.connection());
}

void XInput::click()
{
    press();
    release();
}

void XInput::doubleClick()
{
    // All events are sent at once: if this process were delayed in between, they would be two clicks.
    for (const bool down : {true, false, true, false})
        button(down);
    XFlush(_display.connection());
}

void XInput::pressAndRelease(const Key &stroke)
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
    // A program looks up the meaning of a key when it processes the key, which may be late. All keys are
    // therefore assigned before the first one is pressed, and no key gets another meaning.
    const QList<uint> characters = text.toUcs4();
    for (const uint character : characters) {
        const unsigned long symbol = symbolOf(char32_t{character});
        if (!_keys.contains(symbol) && !assignKey(symbol))
            return false;
    }
    XSync(_display.connection(), False);
    for (const uint character : characters)
        pressAndRelease(_keys.value(symbolOf(char32_t{character})));
    return true;
}

bool XInput::pressKey(const QString &name)
{
    QList<Key> keys;
    for (const QString &part : name.split(u'+')) {
        keys << _keys.value(symbolOf(part));
        if (!keys.last().code)
            return false;
    }
    const Key last = keys.takeLast();
    for (const Key &modifier : std::as_const(keys))
        key(modifier.code, true);
    pressAndRelease(last);
    while (!keys.isEmpty())
        key(keys.takeLast().code, false);
    return true;
}

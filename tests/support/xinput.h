#pragma once

#include <QHash>
#include <QList>
#include <QPoint>
#include <QString>

class XDisplay;

/// Sends mouse and keyboard input, as the X server would report it from real devices.
class XInput
{
public:
    /// Uses \a display, which must be open and outlive this object.
    explicit XInput(const XDisplay &display);

    /// Moves the pointer to \a point of the screen.
    void movePointer(const QPoint &point);
    /// Presses and releases the left button at the pointer's position.
    void click();
    /// Double-clicks at the pointer's position.
    void doubleClick();
    /// Presses the left button and holds it.
    void press();
    /// Releases the left button.
    void release();
    /// Types \a text. A character without a key is assigned to an unused key. Returns false if there is none
    /// left; then nothing is typed.
    bool typeText(const QString &text);
    /// Presses a key by its name: "Return", "Tab", "Escape", "ctrl+a", "shift+Tab". Returns false if there is
    /// no such key.
    bool pressKey(const QString &name);

private:
    /// The position of a character on the keyboard.
    struct Key {
        unsigned char code = 0;
        bool shift = false;
    };

    void readKeyboard();
    bool assignKey(unsigned long symbol);
    void key(unsigned char code, bool down);
    void button(bool down);
    void pressAndRelease(const Key &stroke);

    const XDisplay &_display;
    QHash<unsigned long, Key> _keys; ///< by X key symbol
    QList<unsigned char> _spare;     ///< codes of keys without a character
    unsigned char _shift = 0;
};

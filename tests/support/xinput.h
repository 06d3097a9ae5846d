#pragma once

#include <QHash>
#include <QList>
#include <QPoint>
#include <QString>

#include <functional>

class XDisplay;

/// Sends mouse and keyboard input, as the X server would report it from real devices.
class XInput
{
public:
    /// Uses \a display, which must be open and outlive this object. \a settle is called before a key gets a
    /// new character. It must return only when all keys typed so far have arrived.
    XInput(const XDisplay &display, std::function<void()> settle);
    /// Restores the borrowed keys.
    ~XInput();
    Q_DISABLE_COPY_MOVE(XInput)

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
    /// Turns the wheel by \a steps, down if positive.
    void turnWheel(int steps);
    /// Types \a text. A character without a key is temporarily assigned to an unused key. Returns false if a
    /// character has no key and no key is unused; the characters before it are typed.
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
    void lend(unsigned long symbol);
    void giveBack();
    void assign(unsigned char code, unsigned long symbol);
    void key(unsigned char code, bool down);
    void button(unsigned number, bool down);
    void send();
    void strike(const Key &stroke);
    void strikeAll(const QList<unsigned long> &symbols);

    const XDisplay &_display;
    std::function<void()> _settle;
    QHash<unsigned long, Key> _keys; ///< by X key symbol
    QList<unsigned char> _spare;     ///< codes of keys without a character
    QList<unsigned char> _lent;      ///< codes of spare keys to which this object has assigned a character
    unsigned char _shift = 0;
};

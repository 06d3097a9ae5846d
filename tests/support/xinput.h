#pragma once

#include <QHash>
#include <QList>
#include <QPoint>
#include <QString>

#include <functional>

class XDisplay;

/// Mouse and keyboard, as the X server would report them from real ones.
class XInput
{
public:
    /// On \a display, which must be open and outlive this object. \a settle is called before a key gets a new
    /// character, and must return only when all keys typed so far have arrived.
    XInput(const XDisplay &display, std::function<void()> settle);
    /// Gives back the borrowed keys.
    ~XInput();
    Q_DISABLE_COPY_MOVE(XInput)

    /// Moves the pointer to \a point of the screen.
    void movePointer(const QPoint &point);
    /// Presses and releases the left button where the pointer is.
    void click();
    /// Clicks twice there, as one double click.
    void doubleClick();
    /// Presses the left button and holds it.
    void press();
    /// Lets go of the left button.
    void release();
    /// Turns the wheel by \a steps, down if positive.
    void turnWheel(int steps);
    /// Types \a text. Characters that no key has are put on unused keys for the time being.
    /// False if a character has no key and none is unused; what stands before it is typed.
    bool typeText(const QString &text);
    /// Presses a key by its name: "Return", "Tab", "Escape", "ctrl+a", "shift+Tab". False if there is no such
    /// key.
    bool pressKey(const QString &name);

private:
    /// Where a character is on the keyboard.
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
    QList<unsigned char> _spare;     ///< codes of keys without any character
    QList<unsigned char> _lent;      ///< codes of once spare keys that this object gave a character
    unsigned char _shift = 0;
};

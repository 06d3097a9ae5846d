#include "pages/announcement.h"

#include <QAccessible>
#include <QLabel>

void announce(QLabel *label)
{
    if (!label->isVisible())
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(label, label->text());
#else
    QAccessibleEvent event(label, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
}

Announcement::Announcement(QLabel *label)
    : _label(label)
    , _before(label ? label->text() : QString())
{
}

Announcement::~Announcement()
{
    if (_label && _label->text() != _before)
        announce(_label);
}

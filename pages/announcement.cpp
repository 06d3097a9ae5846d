#include "pages/announcement.h"

#include <QAccessible>
#include <QLabel>

Announcement::Announcement(QLabel *label)
    : _label(label)
    , _before(label ? label->text() : QString())
{
}

Announcement::~Announcement()
{
    if (!_label || !_label->isVisible() || _label->text() == _before)
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(_label, _label->text());
#else
    QAccessibleEvent event(_label, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
}

#include "tests/pages/forminspection.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QProgressBar>
#include <QPushButton>
#include <QTextBrowser>
#include <QWizardPage>

#include "tests/pages/formtables.h"

namespace
{
QString policyName(QSizePolicy::Policy policy)
{
    return QString::fromLatin1(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(policy));
}

QString spacerLine(QSpacerItem *spacer)
{
    const QSize hint = spacer->sizeHint();
    const QSizePolicy policy = spacer->sizePolicy();
    return QStringLiteral("spacer %1x%2 %3 %4")
        .arg(hint.width())
        .arg(hint.height())
        .arg(policyName(policy.horizontalPolicy()), policyName(policy.verticalPolicy()));
}

/// Returns the cell of item \a index of \a layout, followed by a space. In a box layout the order is
/// sufficient; only a stretch is reported.
QString cell(const QLayout *layout, int index)
{
    if (const auto *grid = qobject_cast<const QGridLayout *>(layout)) {
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(index, &row, &column, &rows, &columns);
        return QStringLiteral("%1,%2 %3x%4 ").arg(row).arg(column).arg(rows).arg(columns);
    }
    if (const auto *formLayout = qobject_cast<const QFormLayout *>(layout)) {
        int row;
        QFormLayout::ItemRole role;
        formLayout->getItemPosition(index, &row, &role);
        const char *const names[] = {"LabelRole", "FieldRole", "SpanningRole"};
        return QStringLiteral("%1 %2 ").arg(row).arg(QLatin1String(names[role]));
    }
    const int stretch = qobject_cast<const QBoxLayout *>(layout)->stretch(index);
    return stretch ? QStringLiteral("stretch %1 ").arg(stretch) : QString();
}

template <typename Widget>
std::unique_ptr<QWidget> make()
{
    return std::make_unique<Widget>();
}

/// Returns a new widget of one of Qt's classes; null for a class that no form uses.
std::unique_ptr<QWidget> untouched(const char *className)
{
    static const QHash<QByteArray, std::unique_ptr<QWidget> (*)()> makers = {
        {"QCheckBox", make<QCheckBox>},
        {"QDialog", make<QDialog>},
        {"QLabel", make<QLabel>},
        {"QLineEdit", make<QLineEdit>},
        {"QListView", make<QListView>},
        {"QDialogButtonBox", make<QDialogButtonBox>},
        {"QPushButton", make<QPushButton>},
        {"QProgressBar", make<QProgressBar>},
        {"QTextBrowser", make<QTextBrowser>},
        {"QWizardPage", make<QWizardPage>}};
    const auto maker = makers.value(className);
    return maker ? maker() : nullptr;
}

QString shown(const QVariant &value)
{
    QString text;
    QDebug(&text).nospace() << value;
    return text;
}

bool same(const QVariant &one, const QVariant &other)
{
    // Icons and pixmaps cannot be compared, but they show whether they are null.
    return one == other || (!one.metaType().isEqualityComparable() && shown(one) == shown(other));
}

/// Returns each writable property of \a object whose value differs from \a expected's.
QStringList differences(const QObject *object, const QObject *expected, const QByteArrayList &except)
{
    QStringList wrong;
    const QMetaObject *meta = expected->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (!property.isWritable() || except.contains(property.name()) ||
            property.metaType().flags() & QMetaType::PointerToQObject)
            continue;
        const QVariant is = property.read(object);
        const QVariant shouldBe = property.read(expected);
        if (!same(is, shouldBe))
            wrong +=
                QStringLiteral("%1.%2 is %3, not %4")
                    .arg(object->objectName(), QLatin1String(property.name()), shown(is), shown(shouldBe));
    }
    return wrong;
}

/// Returns a new layout of the same class as \a layout, on \a widget or inside a layout of that widget.
QLayout *untouchedLike(const QLayout *layout, QWidget *widget)
{
    QLayout *made = nullptr;
    if (qobject_cast<const QFormLayout *>(layout))
        made = new QFormLayout;
    else if (qobject_cast<const QGridLayout *>(layout))
        made = new QGridLayout;
    else
        made = new QBoxLayout(qobject_cast<const QBoxLayout *>(layout)->direction());
    if (qobject_cast<const QWidget *>(layout->parent()))
        widget->setLayout(made);
    else
        (new QVBoxLayout(widget))->addLayout(made);
    return made;
}

QStringList stretches(const QGridLayout *grid)
{
    QStringList wrong;
    for (int row = 0; row < grid->rowCount(); ++row)
        if (grid->rowStretch(row) || grid->rowMinimumHeight(row))
            wrong += QStringLiteral("%1 stretches row %2").arg(grid->objectName()).arg(row);
    for (int column = 0; column < grid->columnCount(); ++column)
        if (grid->columnStretch(column) || grid->columnMinimumWidth(column))
            wrong += QStringLiteral("%1 stretches column %2").arg(grid->objectName()).arg(column);
    return wrong;
}

int listeners(const QObject *object, const QMetaMethod &signal)
{
    struct Peek : QObject {
        using QObject::receivers;
    };
    return (object->*(&Peek::receivers))('2' + signal.methodSignature());
}

/// Applies to \a widget what \a form sets on \a object. A property value has priority over a text
/// of the form.
void give(const Form &form, const QString &object, QWidget *widget, QStringList *wrong)
{
    const auto set = [&](const char *property, const QVariant &value) {
        if (!widget->setProperty(property, value))
            *wrong += QStringLiteral("%1 takes no %2").arg(object, QLatin1String(property));
    };
    for (const FormText &row : form.texts)
        if (object == QLatin1String(row.object))
            set(row.property, QString::fromUtf8(row.source));
    for (const FormProperty &row : form.properties)
        if (object == QLatin1String(row.object) && qstrcmp(row.property, "visible"))
            set(row.property, row.value);
}
} // namespace

QString kindAndName(const QObject *object)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(object->metaObject()->className()),
                                       object->objectName());
}

QString outlineOf(QLayout *layout, int depth)
{
    const QString indent = QStringLiteral("  ").repeated(depth + 1);
    QString lines = kindAndName(layout) + QLatin1Char('\n');
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        lines += indent + cell(layout, i);
        if (item->alignment())
            lines += QLatin1String("aligned ");
        if (QLayout *inner = item->layout())
            lines += outlineOf(inner, depth + 1);
        else if (QSpacerItem *spacer = item->spacerItem())
            lines += spacerLine(spacer) + QLatin1Char('\n');
        else
            lines += kindAndName(item->widget()) + QLatin1Char('\n');
    }
    return lines;
}

QWidgetList widgetsOf(const QWidget *widget)
{
    QWidgetList widgets;
    for (QWidget *child : widget->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (!child->objectName().isEmpty())
            widgets.append(child);
    return widgets;
}

QStringList deviations(const Form &form, const QWidget *widget, const QString &object,
                       const char *toolkitClass)
{
    static const QByteArrayList elsewhere = {"objectName", "visible", "geometry", "pos", "size", "frameRect"};
    const std::unique_ptr<QWidget> expected = untouched(toolkitClass);
    if (!expected)
        return {QStringLiteral("an unexpected class: ") + QLatin1String(toolkitClass)};

    QStringList wrong;
    give(form, object, expected.get(), &wrong);
    return wrong + differences(widget, expected.get(), elsewhere);
}

QStringList layoutDeviations(QLayout *layout)
{
    QWidget widget;
    const QLayout *expected = untouchedLike(layout, &widget);
    QStringList wrong = differences(layout, expected, {"objectName"});
    if (layout->contentsMargins() != expected->contentsMargins())
        wrong += layout->objectName() + " has margins of its own";
    if (layout->alignment())
        wrong += layout->objectName() + " is aligned";
    if (const auto *grid = qobject_cast<const QGridLayout *>(layout))
        wrong += stretches(grid);
    for (int i = 0; i < layout->count(); ++i)
        if (QLayout *inner = layout->itemAt(i)->layout())
            wrong += layoutDeviations(inner);
    return wrong;
}

QStringList connectionsBeyond(const Form &form, const QWidget *widget)
{
    QStringList connected;
    const auto compare = [&connected](const QWidget *made, const char *toolkitClass) {
        const std::unique_ptr<QWidget> expected = untouched(toolkitClass);
        const QMetaObject *meta = expected->metaObject();
        for (int i = 0; i < meta->methodCount(); ++i) {
            const QMetaMethod signal = meta->method(i);
            // A layout connects to the destroyed() signal of what it contains.
            if (signal.methodType() == QMetaMethod::Signal && !(signal.attributes() & QMetaMethod::Cloned) &&
                signal.name() != "destroyed" && listeners(made, signal) > listeners(expected.get(), signal))
                connected += made->objectName() + '.' + QString::fromLatin1(signal.methodSignature());
        }
    };
    compare(widget, form.base);
    for (const QWidget *child : widgetsOf(widget))
        compare(child, child->metaObject()->className());
    return connected;
}

#pragma once

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
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

/// What a page or dialog consists of right after its construction: its slots, layouts, spacers and widgets,
/// one line each, from top to bottom.
///
/// The line of a widget begins with its cell in a grid or form layout. After its class and name, it has the
/// properties that differ from those of a new widget of its class, and the signals that are already
/// connected. A text in tr() was translated in the form's context, without a comment.
class FormOutline
{
public:
    /// A PseudoTranslator must exist that was created before \a form.
    explicit FormOutline(QWidget &form)
        : _translated(QLatin1String(form.metaObject()->className()) + QLatin1String("||"))
    {
        addSlots(*form.metaObject());
        addWidget(QString(), form.metaObject()->superClass(), form);
        addLayout(QString(), *form.layout());
    }

    QStringList lines;
    QStringList widgets; ///< the names of the widgets in the layouts

private:
    static QString text(QSize size) { return QStringLiteral("%1x%2").arg(size.width()).arg(size.height()); }

    static QString text(QSizePolicy policy)
    {
        const auto names = QMetaEnum::fromType<QSizePolicy::Policy>();
        return QStringLiteral("%1/%2").arg(names.valueToKey(policy.horizontalPolicy()),
                                           names.valueToKey(policy.verticalPolicy()));
    }

    static QString text(const QFont &font)
    {
        const int points = font.pointSize();
        return QLatin1String(font.bold() ? "bold" : "normal") +
               (points == QFont().pointSize() ? QString() : QStringLiteral("/%1pt").arg(points));
    }

    QString text(const QMetaProperty &property, const QVariant &value) const
    {
        if (property.isEnumType())
            return QString::fromLatin1(property.enumerator().valueToKeys(value.toInt()));
        switch (value.userType()) {
        case QMetaType::QSize:
            return text(value.toSize());
        case QMetaType::QSizePolicy:
            return text(value.value<QSizePolicy>());
        case QMetaType::QFont:
            return text(value.value<QFont>());
        case QMetaType::Bool:
        case QMetaType::Int:
            return value.toString();
        default:
            break;
        }
        QString shown;
        QDebug(&shown).nospace().noquote() << value;
        if (value.userType() == QMetaType::QString)
            shown = '"' + value.toString() + '"';
        return shown.startsWith('"' + _translated) ? "tr(" + shown.remove(_translated) + ')' : shown;
    }

    template <typename... Classes>
    static std::unique_ptr<QWidget> makeDefault(const QMetaObject *meta)
    {
        std::unique_ptr<QWidget> made;
        ((meta == &Classes::staticMetaObject ? void(made = std::make_unique<Classes>()) : void()), ...);
        return made;
    }

    static int receivers(const QWidget &widget, const QMetaMethod &signal)
    {
        struct Peek : QObject {
            using QObject::receivers;
        };
        return (widget.*(&Peek::receivers))('2' + signal.methodSignature());
    }

    void addSlots(const QMetaObject &meta)
    {
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            const bool isPublic = method.access() == QMetaMethod::Public;
            const QByteArray kind = isPublic && method.methodType() == QMetaMethod::Slot ? "slot" : "other";
            const QByteArrayList line = {kind, method.typeName(), method.methodSignature(),
                                         method.parameterNames().join(' ')};
            lines += QString::fromLatin1(line.join(' ').trimmed());
        }
    }

    void addWidget(const QString &start, const QMetaObject *meta, const QWidget &widget)
    {
        // The position is that in the layout. Another property contains the others.
        static const QByteArrayList omitted = {
            "objectName",   "visible",       "geometry",       "pos",          "size", "frameRect",
            "minimumWidth", "minimumHeight", "windowModality", "mouseTracking"};
        const auto plain = makeDefault<QCheckBox, QDialog, QDialogButtonBox, QLabel, QLineEdit, QListView,
                                       QProgressBar, QPushButton, QTextBrowser, QWizardPage>(meta);
        QString line = start + QLatin1String(meta->className()) + ' ' + widget.objectName();
        for (int i = 0; i < meta->propertyCount(); ++i) {
            const QMetaProperty property = meta->property(i);
            if (!property.isWritable() || omitted.contains(property.name()) ||
                property.metaType().flags() & QMetaType::PointerToQObject)
                continue;
            const QString value = text(property, property.read(&widget));
            if (value != text(property, property.read(plain.get())))
                line += QStringLiteral(" %1=%2").arg(QLatin1String(property.name()), value);
        }
        if (widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.isHidden())
            line += QLatin1String(" hidden");
        if (const auto *label = qobject_cast<const QLabel *>(&widget); label && label->buddy())
            line += " buddy=" + label->buddy()->objectName();
        for (int i = 0; i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            // A layout connects to the destroyed() signal of what it contains.
            if (method.methodType() == QMetaMethod::Signal && !(method.attributes() & QMetaMethod::Cloned) &&
                method.name() != "destroyed" && receivers(widget, method) > receivers(*plain, method))
                line += ' ' + QString::fromLatin1(method.methodSignature());
        }
        lines += line;
    }

    static QString cell(QLayout &layout, int index)
    {
        int row = 0;
        if (auto *grid = qobject_cast<QGridLayout *>(&layout)) {
            int column = 0;
            int rows = 0;
            int columns = 0;
            grid->getItemPosition(index, &row, &column, &rows, &columns);
            return QStringLiteral("%1,%2 %3x%4 ").arg(row).arg(column).arg(rows).arg(columns);
        }
        if (auto *form = qobject_cast<QFormLayout *>(&layout)) {
            static constexpr const char *names[] = {"LabelRole", "FieldRole", "SpanningRole"};
            QFormLayout::ItemRole role = QFormLayout::LabelRole;
            form->getItemPosition(index, &row, &role);
            return QStringLiteral("%1 %2 ").arg(row).arg(QLatin1String(names[role]));
        }
        return {};
    }

    void addLayout(const QString &start, QLayout &layout)
    {
        lines += start + layout.metaObject()->className() + ' ' + layout.objectName();
        const qsizetype indent = start.size() - start.trimmed().size() + 2;
        for (int i = 0; i < layout.count(); ++i) {
            QLayoutItem *item = layout.itemAt(i);
            const QString begin = QString(indent, ' ') + cell(layout, i);
            if (QLayout *inner = item->layout()) {
                addLayout(begin, *inner);
            } else if (QSpacerItem *spacer = item->spacerItem()) {
                lines += begin + "spacer " + text(spacer->sizeHint()) + ' ' + text(spacer->sizePolicy());
            } else {
                widgets += item->widget()->objectName();
                addWidget(begin, item->widget()->metaObject(), *item->widget());
            }
        }
    }

    const QString _translated; ///< what precedes a translated text
};

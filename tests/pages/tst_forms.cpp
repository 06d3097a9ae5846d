#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>

#include "app/console_dialog.h"
#include "pages/choosenetworkwizardpage.h"
#include "tests/pages/forminspection.h"
#include "tests/pages/formtables.h"
#include "tests/support/pseudotranslator.h"

namespace
{
/// Returns the page or dialog \a widget itself, or its child widget of that name; null when there is none.
QWidget *find(QWidget *widget, const char *object)
{
    return *object ? widget->findChild<QWidget *>(QLatin1String(object)) : widget;
}

QString signature(const QMetaMethod &method)
{
    QStringList parameters;
    for (int i = 0; i < method.parameterCount(); ++i)
        parameters += QString::fromLatin1(method.parameterTypes().at(i) + ' ' + method.parameterNames().at(i))
                          .trimmed();
    return QStringLiteral("%1(%2)").arg(QLatin1String(method.name()), parameters.join(QLatin1String(", ")));
}
} // namespace

/// Tests that each page and dialog is constructed as its table says, and that everything else has its
/// default.
class TestForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowNamesSomethingThatExists_data() { eachForm(); }
    void everyRowNamesSomethingThatExists();
    void layoutsHoldTheirItemsInOrder_data() { eachForm(); }
    void layoutsHoldTheirItemsInOrder();
    void widgetsAreMadeFromTopToBottom_data() { eachForm(); }
    void widgetsAreMadeFromTopToBottom();
    void nothingButTheGivenPropertiesIsSet_data() { eachForm(); }
    void nothingButTheGivenPropertiesIsSet();
    void layoutsAreAsTheToolkitMakesThem_data() { eachForm(); }
    void layoutsAreAsTheToolkitMakesThem();
    void tabsGoFromTopToBottom_data() { eachForm(); }
    void tabsGoFromTopToBottom();
    void onlyTheseWidgetsAreConnected_data() { eachForm(); }
    void onlyTheseWidgetsAreConnected();
    void everythingIsShownUnlessHiddenAtFirst_data() { eachForm(); }
    void everythingIsShownUnlessHiddenAtFirst();
    void textsAreTranslatedInTheFormsContext_data() { eachForm(); }
    void textsAreTranslatedInTheFormsContext();
    void theMetaObjectHasTheseSlotsAndNothingElse_data() { eachForm(); }
    void theMetaObjectHasTheseSlotsAndNothingElse();

    void theRefreshButtonIsNoAutoDefault();
    void okAcceptsAndCancelRejects_data();
    void okAcceptsAndCancelRejects();
    void theConsolesTextIsTheFormsBrowser();

private:
    static void eachForm();
    /// The form of the current test row.
    static const Form &form();
};

void TestForms::eachForm()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < forms().size(); ++i)
        QTest::newRow(forms().at(i).name) << i;
}

const Form &TestForms::form()
{
    QFETCH(int, index);
    return forms().at(index);
}

void TestForms::everyRowNamesSomethingThatExists()
{
    const std::unique_ptr<QWidget> widget = form().make();
    const auto exists = [&](const auto &row) {
        const QWidget *object = find(widget.get(), row.object);
        return object && object->metaObject()->indexOfProperty(row.property) >= 0;
    };
    for (const FormText &row : form().texts)
        QVERIFY2(exists(row), row.object);
    for (const FormProperty &row : form().properties)
        QVERIFY2(exists(row), row.object);
}

void TestForms::layoutsHoldTheirItemsInOrder()
{
    const std::unique_ptr<QWidget> widget = form().make();
    QCOMPARE(QLatin1Char('\n') + outlineOf(widget->layout()), QString::fromLatin1(form().outline));
}

void TestForms::widgetsAreMadeFromTopToBottom()
{
    const std::unique_ptr<QWidget> widget = form().make();
    QStringList made;
    for (const QWidget *child : widgetsOf(widget.get()))
        made += kindAndName(child);

    QStringList drawn;
    static const QRegularExpression layoutOrSpacer("Layout |spacer ");
    for (const QString &line : QString::fromLatin1(form().outline).split('\n', Qt::SkipEmptyParts))
        if (!line.contains(layoutOrSpacer))
            drawn += line.section(' ', -2);
    QCOMPARE(made, drawn);
}

void TestForms::nothingButTheGivenPropertiesIsSet()
{
    const std::unique_ptr<QWidget> widget = form().make();
    QCOMPARE(widget->objectName(), QString::fromLatin1(form().name));
    QCOMPARE(widget->size(), form().size);

    QStringList wrong = deviations(form(), widget.get(), QLatin1String(itself), form().base);
    for (const QWidget *child : widgetsOf(widget.get()))
        wrong += deviations(form(), child, child->objectName(), child->metaObject()->className());
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));

    QMap<QString, QString> buddies;
    for (const QLabel *label : widget->findChildren<QLabel *>()) {
        if (label->buddy())
            buddies.insert(label->objectName(), label->buddy()->objectName());
    }
    QCOMPARE(buddies, form().buddies);
    for (const QLineEdit *field : widget->findChildren<QLineEdit *>())
        QVERIFY2(!field->validator(), qPrintable(field->objectName()));
}

void TestForms::layoutsAreAsTheToolkitMakesThem()
{
    const std::unique_ptr<QWidget> widget = form().make();
    const QStringList wrong = layoutDeviations(widget->layout());
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

void TestForms::tabsGoFromTopToBottom()
{
    const std::unique_ptr<QWidget> widget = form().make();
    const QWidgetList made = widgetsOf(widget.get());
    QStringList expected;
    for (const QWidget *child : made)
        expected += child->objectName();
    QStringList visited;
    for (auto *next = widget->nextInFocusChain(); next != widget.get(); next = next->nextInFocusChain())
        if (made.contains(next))
            visited += next->objectName();
    QCOMPARE(visited.join(' '), expected.join(' '));
}

void TestForms::onlyTheseWidgetsAreConnected()
{
    const std::unique_ptr<QWidget> widget = form().make();
    QCOMPARE(connectionsBeyond(form(), widget.get()).join(' '), form().connected.join(' '));
}

void TestForms::everythingIsShownUnlessHiddenAtFirst()
{
    const std::unique_ptr<QWidget> widget = form().make();
    QVERIFY(!widget->isVisible());
    widget->show();
    QStringList hidden;
    for (const QWidget *child : widgetsOf(widget.get()))
        if (!child->isVisible())
            hidden += child->objectName();
    QStringList hiddenAtFirst;
    for (const FormProperty &row : form().properties)
        if (!qstrcmp(row.property, "visible"))
            hiddenAtFirst += QLatin1String(row.object);
    QCOMPARE(hidden, hiddenAtFirst);
}

void TestForms::textsAreTranslatedInTheFormsContext()
{
    const PseudoTranslator translator;
    const std::unique_ptr<QWidget> widget = form().make();

    QStringList expected;
    for (const FormText &row : form().texts) {
        const QString source = QString::fromUtf8(row.source);
        const QString marked = QLatin1String(form().name) + "||" + source;
        expected += marked;
        if (source != QLatin1String("TextLabel")) // a placeholder, which a constructor may have replaced
            QCOMPARE(find(widget.get(), row.object)->property(row.property).toString(), marked);
    }
    QCOMPARE(translator.asked(form().name), expected);
}

void TestForms::theMetaObjectHasTheseSlotsAndNothingElse()
{
    const std::unique_ptr<QWidget> widget = form().make();
    const QMetaObject *meta = widget->metaObject();
    QCOMPARE(meta->className(), form().name);
    QCOMPARE(meta->superClass()->className(), form().base);
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());

    QStringList methods;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Public);
        QCOMPARE(method.returnMetaType(), QMetaType::fromType<void>());
        methods += signature(method);
    }
    QCOMPARE(methods, form().methods);
}

void TestForms::theRefreshButtonIsNoAutoDefault()
{
    // A push button in a dialog is auto-default unless this is switched off.
    QDialog dialog;
    const ChooseNetworkWizardPage page(&dialog);
    QVERIFY(!page.findChild<QPushButton *>("refreshButton")->autoDefault());
    QVERIFY(page.findChild<QPushButton *>("viewDetailsButton")->autoDefault());
}

void TestForms::okAcceptsAndCancelRejects_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("result");
    QTest::newRow("OK accepts") << int(QDialogButtonBox::Ok) << int(QDialog::Accepted);
    QTest::newRow("Cancel rejects") << int(QDialogButtonBox::Cancel) << int(QDialog::Rejected);
}

void TestForms::okAcceptsAndCancelRejects()
{
    QFETCH(int, button);
    QFETCH(int, result);
    int boxes = 0;
    for (const Form &each : forms()) {
        const std::unique_ptr<QWidget> widget = each.make();
        auto *box = widget->findChild<QDialogButtonBox *>("buttonBox");
        if (!box)
            continue;
        ++boxes;
        QSignalSpy finished(qobject_cast<QDialog *>(widget.get()), &QDialog::finished);
        widget->show();
        box->button(QDialogButtonBox::StandardButton(button))->click();
        QCOMPARE(finished, {QVariantList{result}});
        QVERIFY(!widget->isVisible());
    }
    QCOMPARE(boxes, 2);
}

void TestForms::theConsolesTextIsTheFormsBrowser()
{
    const console_dialog console;
    QVERIFY(console.console_textBrowser());
    QCOMPARE(console.console_textBrowser(), console.findChild<QTextBrowser *>("textBrowser_log_console"));
    QVERIFY(console.console_textBrowser()->isReadOnly());
}

QTEST_MAIN(TestForms)
#include "tst_forms.moc"

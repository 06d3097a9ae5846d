#include <QApplication>
#include <QDir>
#include <QFile>
#include <QGenericPlugin>
#include <QIcon>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>
#include <QResource>
#include <QTextBrowser>
#include <QTranslator>
#include <QWizard>

namespace
{
QString sessionLog()
{
    QFile file(QDir::homePath() + QStringLiteral("/zvinstall.log"));
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()) : QString();
}

QWizard *theWizard()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (auto *wizard = qobject_cast<QWizard *>(window))
            return wizard;
    }
    return nullptr;
}

QJsonArray visibleWindows()
{
    QJsonArray titles;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        if (window->isVisible())
            titles.append(window->windowTitle());
    }
    return titles;
}

QString consoleTitle()
{
    return QCoreApplication::translate("console_dialog", "Console Log");
}

/// Runs after the program's own static objects have been destroyed.
__attribute__((destructor)) void logLastMessage()
{
    const QString message = qEnvironmentVariable("ZV_PROBE_LAST_MESSAGE");
    if (!message.isEmpty())
        qWarning("%s", qPrintable(message));
}
} // namespace

/// Inspects the real program from inside, where Qt loads it as a plugin, and reports what cannot be seen from
/// outside. It is created while the application object is constructed, inspects the program again as soon as
/// the event loop runs, and then ends the program.
///
/// Environment variables control it: ZV_PROBE_REPORT is the file that receives the results. ZV_PROBE_END is
/// how to end the program: "accept" or "reject" for the wizard, or an exit code for the event loop.
/// ZV_PROBE_LAST_MESSAGE is a message to log when all other code of the program has ended.
class InProcessProbe : public QObject
{
    Q_OBJECT

public:
    InProcessProbe();

private:
    void lookAround();
    void writeReport() const;
    static void endProgram(const QString &how);

    QJsonObject _seen;
};

/// The plugin through which Qt loads the probe.
class InProcessProbePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "inprocessprobe.json")

public:
    QObject *create(const QString &, const QString &) override { return new InProcessProbe; }
};

InProcessProbe::InProcessProbe()
{
    qWarning("the application object is being made");
    const QString bundle = qEnvironmentVariable("ZV_PROBE_BUNDLE");
    if (!bundle.isEmpty() && !QResource::registerResource(bundle))
        qWarning("the probe's bundle can't be read");
    _seen.insert(QStringLiteral("log before"), sessionLog());
    _seen.insert(QStringLiteral("bundle is there"), QFile::exists(QStringLiteral(":/zv_setup.png")));
    QMetaObject::invokeMethod(this, &InProcessProbe::lookAround, Qt::QueuedConnection);
}

void InProcessProbe::lookAround()
{
    qWarning("the event loop runs");
    _seen.insert(QStringLiteral("log"), sessionLog());
    _seen.insert(QStringLiteral("windows"), visibleWindows());
    _seen.insert(QStringLiteral("icon is empty"), QApplication::windowIcon().isNull());
    _seen.insert(QStringLiteral("application's translators"),
                 QCoreApplication::instance()->findChildren<QTranslator *>().size());
    _seen.insert(QStringLiteral("console's title"), consoleTitle());
    if (QWizard *wizard = theWizard()) {
        _seen.insert(QStringLiteral("console button"), wizard->button(QWizard::CustomButton1)->text());
        _seen.insert(QStringLiteral("cancel button"), wizard->button(QWizard::CancelButton)->text());
        _seen.insert(QStringLiteral("console"), wizard->findChild<QTextBrowser *>()->toPlainText());
        _seen.insert(QStringLiteral("modal"), wizard->isModal());
        connect(wizard, &QObject::destroyed, this, [this] {
            qWarning("the wizard is gone");
            // The translator and the application outlive it.
            _seen.insert(QStringLiteral("console's title at the end"), consoleTitle());
            writeReport();
        });
    }
    writeReport();
    endProgram(qEnvironmentVariable("ZV_PROBE_END"));
}

void InProcessProbe::writeReport() const
{
    QFile report(qEnvironmentVariable("ZV_PROBE_REPORT"));
    if (report.open(QIODevice::WriteOnly))
        report.write(QJsonDocument(_seen).toJson());
}

void InProcessProbe::endProgram(const QString &how)
{
    if (how == QLatin1String("accept"))
        theWizard()->accept();
    else if (how == QLatin1String("reject"))
        theWizard()->reject();
    else
        QCoreApplication::exit(how.toInt());
}

#include "inprocessprobe.moc"

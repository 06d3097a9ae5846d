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
/// Environment variables control it. ZV_PROBE_REPORT is the file that receives the results. ZV_PROBE_END is
/// how to end the program: "accept" for the wizard, or an exit code for the event loop. ZV_PROBE_BUNDLE is a
/// resource file to register first. ZV_PROBE_LAST_MESSAGE is a message to log when all other code of the
/// program has ended.
class InProcessProbe : public QObject
{
public:
    InProcessProbe()
    {
        qWarning("the application object is being made");
        const QString bundle = qEnvironmentVariable("ZV_PROBE_BUNDLE");
        if (!bundle.isEmpty() && !QResource::registerResource(bundle))
            qWarning("cannot read the probe's bundle");
        _seen["log before"] = sessionLog();
        _seen["bundle is there"] = QFile::exists(QStringLiteral(":/zv_setup.png"));
        QMetaObject::invokeMethod(this, &InProcessProbe::inspect, Qt::QueuedConnection);
    }

private:
    void inspect()
    {
        qWarning("the event loop runs");
        _seen["log"] = sessionLog();
        _seen["windows"] = visibleWindows();
        _seen["icon is empty"] = QApplication::windowIcon().isNull();
        _seen["application's translators"] =
            QCoreApplication::instance()->findChildren<QTranslator *>().size();
        _seen["console's title"] = consoleTitle();
        QWizard *wizard = theWizard();
        if (wizard) {
            _seen["console button"] = wizard->button(QWizard::CustomButton1)->text();
            _seen["cancel button"] = wizard->button(QWizard::CancelButton)->text();
            _seen["console"] = wizard->findChild<QTextBrowser *>()->toPlainText();
            _seen["modal"] = wizard->isModal();
            connect(wizard, &QObject::destroyed, this, [this] {
                qWarning("the wizard is gone");
                // The translator and the application outlive it.
                _seen["console's title at the end"] = consoleTitle();
                writeReport();
            });
        }
        writeReport();

        const QString end = qEnvironmentVariable("ZV_PROBE_END");
        if (end == QLatin1String("accept"))
            wizard->accept();
        else
            QCoreApplication::exit(end.toInt());
    }
    void writeReport() const
    {
        QFile report(qEnvironmentVariable("ZV_PROBE_REPORT"));
        if (report.open(QIODevice::WriteOnly))
            report.write(QJsonDocument(_seen).toJson());
    }

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

#include "inprocessprobe.moc"

#include <chrono>
#include <sys/resource.h>

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QGenericPlugin>
#include <QTimer>
#include <QWizardPage>

namespace
{
using namespace std::chrono_literals;

constexpr auto settling = 1000ms; // from the first page to an idle program

qint64 peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = status.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("VmHWM:"))
                return line.simplified().split(' ').value(1).toLongLong();
        }
    }
    return 0;
}

/// The CPU time that the program has used, in milliseconds.
double processorTime()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto ms = [](const timeval &time) {
        return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}
} // namespace

/// Qt loads it as a plugin into a program with a wizard. It detects when the first page is on the screen,
/// writes a report and ends the program.
///
/// Environment variables configure it: ZV_BENCH_REPORT names the file that gets the report, and ZV_BENCH_IDLE
/// gives the time in milliseconds for which the idle page is measured, if at all. The report is one line of
/// four numbers: when the page was shown (nanoseconds of the monotonic clock), the CPU time until then
/// (milliseconds), the peak memory until then (KiB), and the CPU time that the idle page used (milliseconds).
class FirstPage : public QObject
{
public:
    FirstPage() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!_seen && event->type() == QEvent::Paint && qobject_cast<QWizardPage *>(watched)) {
            _seen = true;
            QCoreApplication::instance()->removeEventFilter(this);
            // The event loop gets here when the whole window is painted and sent to the screen.
            QMetaObject::invokeMethod(this, &FirstPage::shown, Qt::QueuedConnection);
        }
        return false;
    }

private:
    void shown()
    {
        _shownAt = std::chrono::steady_clock::now().time_since_epoch().count();
        _cpu = processorTime();
        _peakMemory = peakMemory();
        const int idle = qEnvironmentVariableIntValue("ZV_BENCH_IDLE");
        if (idle == 0)
            return report(0);
        QTimer::singleShot(settling, Qt::PreciseTimer, this, [this, idle] {
            const double before = processorTime();
            QTimer::singleShot(idle, Qt::PreciseTimer, this,
                               [this, before] { report(processorTime() - before); });
        });
    }

    void report(double idleCpu) const
    {
        QFile file(qEnvironmentVariable("ZV_BENCH_REPORT"));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(QByteArray::number(_shownAt) + ' ' + QByteArray::number(_cpu) + ' ' +
                       QByteArray::number(_peakMemory) + ' ' + QByteArray::number(idleCpu));
            file.close();
        }
        QCoreApplication::exit(0);
    }

    bool _seen = false;
    qint64 _shownAt = 0;
    double _cpu = 0;
    qint64 _peakMemory = 0;
};

/// The plugin through which Qt loads FirstPage.
class FirstPagePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "firstpage.json")

public:
    QObject *create(const QString &, const QString &) override { return new FirstPage; }
};

#include "firstpage.moc"

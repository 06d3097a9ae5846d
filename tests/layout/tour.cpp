#include "tests/layout/tour.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTextEdit>

#include "app/zvtolvarsetupwizard.h"
#include "messages/sessionlog.h"
#include "pages/choosenetworkwizardpage.h"
#include "pages/pageid.h"
#include "simulator/tolvardocuments.h"
#include "tests/support/modaldialogresponder.h"
#include "tests/support/zvtolvartestpeer.h"

namespace
{
constexpr QLatin1String longestName("The name with thirty-two letters");

class Tour
{
public:
    explicit Tour(const ViewCallback &onlooker)
        : _onlooker(onlooker)
    {
        _wizard.show();
    }
    ~Tour() { _wizard.hide(); }

    void goThrough()
    {
        connectPage();
        foundPage();
        choosePage();
        dialogs();
        wepPage();
        testPage();
        console();
    }

    /// No other page leads to this one.
    void notFoundPage()
    {
        _wizard.setStartId(TolvarNotFoundPageId);
        _wizard.restart();
        see("not-found");
    }

private:
    Q_DISABLE_COPY_MOVE(Tour)

    void connectPage()
    {
        see("connect-looking");
        Q_EMIT _tolvar.candidateDeviceFound();
        see("connect-getting-status");
        tellStatus("A060");
        see("connect-found");
    }

    void foundPage()
    {
        _wizard.next();
        see("found");

        auto *getLog = field<QAbstractButton>("pushButton_viewLog");
        tellStatus("A059");
        {
            const ModalDialogResponder box({closing("found-firmware-too-old")});
            getLog->click();
        }
        tellStatus("A060");

        {
            const ModalDialogResponder dialog({[this](QDialog *save) {
                // Qt starts in the folder of the last use, which may no longer exist.
                auto *files = qobject_cast<QFileDialog *>(save);
                files->setDirectory(_folder.path());
                files->selectFile(QStringLiteral("zvtolvar_log_14Mar12.txt"));
                see("found-save-log", save);
                save->accept();
            }});
            getLog->click();
        }
        see("found-log-writing");
        reply(TolvarDocuments::logFile(_setup.logText));
        see("found-log-written");
        {
            const auto takeOneThatCannotBe = [this](QDialog *save) {
                auto *files = qobject_cast<QFileDialog *>(save);
                files->setDirectory(_folder.path());
                files->selectFile(
                    QStringLiteral("zvtolvar_log_15Mar12.txt")); // does not exist, so there is no question
                save->accept();
                QDir(_folder.path()).removeRecursively();
            };
            const ModalDialogResponder dialogs({takeOneThatCannotBe, closing("found-log-not-opened")});
            getLog->click();
        }
    }

    void choosePage()
    {
        _wizard.next();
        see("choose-scanning");
        finish("scan", TolvarDocuments::scanResults(_setup.air));
        see("choose-networks");

        pick(longestName);
        field<QLineEdit>("input_Password")->setText("as long as it may be");
        see("choose-picked");
    }

    void dialogs()
    {
        {
            const ModalDialogResponder dialog({closing("details")});
            field<QAbstractButton>("viewDetailsButton")->click();
        }
        auto *page = _wizard.findChild<ChooseNetworkWizardPage *>();
        const ModalDialogResponder boxes({closing("advanced"), closing("advanced-firmware-too-old")});
        page->OnAdvancedButtonClicked();
        tellStatus("A058");
        page->OnAdvancedButtonClicked();
        tellStatus("A060");
    }

    void wepPage()
    {
        pick("Old Barn");
        _wizard.next();
        see("wep-warning");
        _wizard.back();
        pick(longestName);
    }

    void testPage()
    {
        const std::pair<int, const char *> verdicts[] = {{1, "test-passphrase-invalid"},
                                                         {2, "test-network-not-found"},
                                                         {3, "test-system-error"},
                                                         {0, "test-success"}};
        for (const auto &[result, view] : verdicts) {
            _wizard.next();
            if (result == 1)
                see("test-testing");
            finish("test", TolvarDocuments::testResults(QByteArray(longestName.data()), "", result));
            see(view);
            if (result != 0)
                _wizard.back();
        }
        field<QAbstractButton>("pushButton")->click();
        see("test-saved");
    }

    void console()
    {
        _wizard.consoleButtonClicked();
        const QByteArray status = TolvarDocuments::status(_setup, _setup.configuration, _setup.testResult);
        for (const QByteArray &said : {QByteArray("get\r\n"), status, QByteArray("\r\n>\r\n")})
            zvMessageOutput(QtWarningMsg, said);
        see("console", theConsoleWindow->window());
        theConsoleWindow->window()->hide();
    }

    void see(const char *view) { see(view, &_wizard); }
    void see(const char *view, QWidget *window)
    {
        for (int i = 0; i < 10; ++i)
            QApplication::processEvents(); // one layout may invalidate another
        _onlooker(QString::fromLatin1(view), window);
    }
    ModalDialogResponder::Answer closing(const char *view)
    {
        return [this, view](QDialog *dialog) {
            see(view, dialog);
            dialog->reject();
        };
    }

    void pick(const QString &network)
    {
        const auto *list = field<QListView>("networkListView");
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            const QModelIndex index = list->model()->index(row, 0);
            if (index.data().toString() != network)
                continue;
            field<QListView>("networkListView")->setCurrentIndex(index);
            Q_EMIT field<QListView>("networkListView")->clicked(index);
            return;
        }
        qFatal("the list doesn't have %s", qPrintable(network));
    }
    template <typename Widget>
    Widget *field(const char *name) const
    {
        auto *found = _wizard.currentPage()->findChild<Widget *>(QLatin1String(name));
        if (!found)
            qFatal("the page has no %s", name);
        return found;
    }

    void tellStatus(const char *firmware)
    {
        _setup.firmwareVersion = firmware;
        reply(TolvarDocuments::status(_setup, _setup.configuration, _setup.testResult));
    }
    void reply(const QByteArray &document) { _tolvar.onResponseReceived(QString::fromLatin1(document)); }
    /// Completes the device's current task.
    void finish(const char *what, const QByteArray &document)
    {
        if (!_inside.scanning() && !_inside.testing())
            qFatal("there is no %s to be finished", what);
        for (const char byte : '\x02' + document + '\x03')
            _tolvar.handleReceived(byte);
        // The link is at the prompt now and would send the queued commands, to a port that does not exist.
        _inside.state() = NOT_CONNECTED;
    }

    const ViewCallback &_onlooker;
    const QTemporaryDir _folder{QDir::tempPath() + QStringLiteral("/Documents-XXXXXX")};
    DeviceConfig _setup;
    ZVTolvarSetupWizard _wizard;
    ZVTolvar &_tolvar = *_wizard._tolvar;
    const ZVTolvarTestPeer _inside{_tolvar};
};
} // namespace

void tour(const ViewCallback &onlooker)
{
    Tour(onlooker).goThrough();
    Tour(onlooker).notFoundPage();
}

#include "tests/layout/allviews.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTextEdit>

#include "messages/sessionlog.h"
#include "pages/choosenetworkwizardpage.h"
#include "pages/pageid.h"
#include "simulator/tolvardocuments.h"
#include "tests/support/modaldialogresponder.h"
#include "tests/support/wizardfixture.h"

namespace
{
constexpr QLatin1String longestName("The name with thirty-two letters");

class AllViews
{
public:
    explicit AllViews(const ViewCallback &callback)
        : _callback(callback)
    {
    }

    void showInOrder()
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
        _f.wizard.setStartId(TolvarNotFoundPageId);
        _f.wizard.restart();
        showView("not-found");
    }

private:
    Q_DISABLE_COPY_MOVE(AllViews)

    void connectPage()
    {
        showView("connect-looking");
        Q_EMIT _f.tolvar.candidateDeviceFound();
        showView("connect-getting-status");
        sendStatus("A060");
        showView("connect-found");
    }

    void foundPage()
    {
        _robot.clickContinue();
        showView("found");
        sendStatus("A059");
        downloadLog({showAndReject("found-firmware-too-old")});
        sendStatus("A060");

        downloadLog({[this](QDialog *dialog) {
            WizardRobot::enterFile(dialog, _folder.filePath("zvtolvar_log_14Mar12.txt"));
            showView("found-save-log", dialog);
            dialog->accept();
        }});
        showView("found-log-writing");
        _f.reply(QString::fromLatin1(TolvarDocuments::logFile(_config.logText)));
        showView("found-log-written");
        const auto chooseFileThatCannotBeCreated = [this](QDialog *dialog) {
            WizardRobot::enterFile(dialog, _folder.filePath("zvtolvar_log_15Mar12.txt"));
            dialog->accept();
            QDir(_folder.path()).removeRecursively();
        };
        downloadLog({chooseFileThatCannotBeCreated, showAndReject("found-log-not-opened")});
    }

    void choosePage()
    {
        _robot.clickContinue();
        showView("choose-scanning");
        finish(TolvarDocuments::scanResults(_config.air));
        showView("choose-networks");

        select(longestName);
        _robot.typePassphrase(QStringLiteral("as long as it may be"));
        showView("choose-picked");
    }

    void dialogs()
    {
        {
            const ModalDialogResponder dialog({showAndReject("details")});
            _robot.widget<QAbstractButton>("viewDetailsButton")->click();
        }
        auto *page = _f.wizard.findChild<ChooseNetworkWizardPage *>();
        const ModalDialogResponder boxes(
            {showAndReject("advanced"), showAndReject("advanced-firmware-too-old")});
        page->OnAdvancedButtonClicked();
        sendStatus("A058");
        page->OnAdvancedButtonClicked();
        sendStatus("A060");
    }

    void wepPage()
    {
        select(QStringLiteral("Old Barn"));
        _robot.clickContinue();
        showView("wep-warning");
        _robot.clickGoBack();
        select(longestName);
    }

    void testPage()
    {
        const std::pair<int, const char *> verdicts[] = {{1, "test-passphrase-invalid"},
                                                         {2, "test-network-not-found"},
                                                         {3, "test-system-error"},
                                                         {0, "test-success"}};
        for (const auto &[result, view] : verdicts) {
            _robot.clickContinue();
            if (result == 1)
                showView("test-testing");
            finish(TolvarDocuments::testResults(QByteArray(longestName.data()), "", result));
            showView(view);
            if (result != 0)
                _robot.clickGoBack();
        }
        _robot.clickSave();
        showView("test-saved");
    }

    void console()
    {
        _f.wizard.consoleButtonClicked();
        const QByteArray status = TolvarDocuments::status(_config, _config.configuration, _config.testResult);
        for (const QByteArray &output : {QByteArray("get\r\n"), status, QByteArray("\r\n>\r\n")})
            zvMessageOutput(QtWarningMsg, output);
        showView("console", theConsoleWindow->window());
        theConsoleWindow->window()->hide();
    }

    void showView(const char *view) { showView(view, &_f.wizard); }
    void showView(const char *view, QWidget *window)
    {
        for (int i = 0; i < 10; ++i)
            QApplication::processEvents(); // one layout may invalidate another
        _callback(QString::fromLatin1(view), window);
    }
    ModalDialogResponder::Answer showAndReject(const char *view)
    {
        return [this, view](QDialog *dialog) {
            showView(view, dialog);
            dialog->reject();
        };
    }
    void downloadLog(const QList<ModalDialogResponder::Answer> &answers)
    {
        const ModalDialogResponder dialogs(answers);
        _robot.clickDownloadLog();
    }
    void select(const QString &network)
    {
        if (!_robot.selectNetwork(network))
            qFatal("the list does not contain %s", qPrintable(network));
    }

    void sendStatus(const char *firmware)
    {
        _config.firmwareVersion = firmware;
        _f.reply(
            QString::fromLatin1(TolvarDocuments::status(_config, _config.configuration, _config.testResult)));
    }
    void finish(const QByteArray &document) { _f.finish(QString::fromLatin1(document)); }

    const ViewCallback &_callback;
    const QTemporaryDir _folder{QDir::tempPath() + QStringLiteral("/Documents-XXXXXX")};
    DeviceConfig _config;
    WizardFixture _f;
    WizardRobot &_robot = _f.robot;
};
} // namespace

void showAllViews(const ViewCallback &callback)
{
    AllViews(callback).showInOrder();
    AllViews(callback).notFoundPage();
}

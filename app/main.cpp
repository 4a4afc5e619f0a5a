#include "clock/clock.h"
#include "environment/startuperror.h"
#include "environment/tallyrunapp.h"
#include "refusal/refusal.h"
#include "startup/appprofile.h"
#include "startup/marketregistry.h"
#include "stores/apprelauncher.h"
#include "stores/marketswitcher.h"
#include "ui/mainwindow.h"
#include "ui/style/theme.h"
#include "ui/tallyrunapplication.h"

#include <QIcon>
#include <QMessageBox>

#include <cstdio>
#include <memory>
#include <optional>

namespace {
int stopAtStartup(const QString& description)
{
    std::fprintf(stderr, "Tallyrun: %s\n", qPrintable(description));
    // Without a screen to show it on, a modal box would wait forever.
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        QMessageBox::critical(nullptr, QStringLiteral("Brindle"), description);
    return 1;
}
} // namespace

int main(int argc, char* argv[])
{
    Clock::readLocalZoneOnce();
    // Before the first QSettings, so preferences land under Tallyrun.
    QCoreApplication::setOrganizationName(AppProfile::organizationName());
    QCoreApplication::setApplicationName(AppProfile::applicationName());
    TallyrunApplication application(argc, argv);
    application.setWindowIcon(QIcon(QStringLiteral(":/icons/tallyrun.png")));
    // Ties the window to tallyrun.desktop, for its name and icon in the task bar.
    QGuiApplication::setDesktopFileName(QStringLiteral("tallyrun"));
    Theme::apply(application);

    MarketRegistry registry(AppProfile::defaults());
    std::unique_ptr<TallyrunApp> app;
    try {
        app = std::make_unique<TallyrunApp>(registry, TallyrunApp::defaultStorePath());
    } catch (const StartupError& error) {
        return stopAtStartup(error.description());
    }

    SystemAppRelauncher relauncher([&app] { app->releaseStoreLock(); });
    MarketSwitcher switcher(registry, relauncher);
    std::unique_ptr<MainWindow> window;
    try {
        // The first screen reads the store; with no window to show a message in yet, a store that
        // can't be read ends the start.
        window = std::make_unique<MainWindow>(app->environment(), app->session(), registry, switcher,
                                              app->market().name);
    } catch (const Refusal& refusal) {
        return stopAtStartup(refusal.description());
    }
    window->show();
    // The store opened and works; what start-up could not repair is said once, not hidden.
    if (const std::optional<QString> problem = app->maintenanceProblem())
        QMessageBox::warning(window.get(), QStringLiteral("Brindle"), *problem);
    if (const std::optional<QString> notice = app->sharedCodesNotice())
        QMessageBox::warning(window.get(), QStringLiteral("Brindle"), *notice);
    return application.exec();
}

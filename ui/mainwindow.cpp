#include "ui/mainwindow.h"

#include "environment/appenvironment.h"
#include "pos/posviewmodel.h"
#include "refusal/refusal.h"
#include "startup/appinfo.h"
#include "startup/sessionstore.h"
#include "ui/access/firstrunsetupview.h"
#include "ui/access/loginview.h"
#include "ui/appointments/appointmentsview.h"
#include "ui/customers/customersview.h"
#include "ui/dashboard/dashboardview.h"
#include "ui/history/saleshistoryview.h"
#include "ui/inventory/inventoryview.h"
#include "ui/navigation/mainnavigationview.h"
#include "ui/navigation/poscommands.h"
#include "ui/navigation/screenfind.h"
#include "ui/pos/posworkspaceview.h"
#include "ui/products/productsview.h"
#include "ui/settings/settingsview.h"
#include "ui/staff/staffview.h"
#include "ui/stores/marketcommands.h"
#include "ui/audit/auditlogview.h"
#include "ui/receipts/dialogprintpanel.h"
#include "ui/refunds/refundview.h"
#include "ui/stores/newmarketsheet.h"
#include "ui/suppliers/suppliersview.h"
#include "ui/till/tillview.h"

#include <QCloseEvent>
#include <QDir>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>

// The counter's view model, as long as the signed-in window: the cart survives moving between
// sections. It is made at the first visit to the workspace or the first Ring Up, as reading a
// large shop's product grid takes a moment that an admin who never sells shouldn't wait.
class CounterModelHolder {
public:
    CounterModelHolder(AppEnvironment& environment, SessionStore& session)
        : m_environment(environment)
        , m_session(session)
    {
    }

    POSViewModel& model()
    {
        if (!m_model)
            m_model = new POSViewModel(m_environment, m_session, m_owner);
        return *m_model;
    }
    // The window, once it exists; a model made while it was being built joins it then.
    void setOwner(QObject* owner)
    {
        m_owner = owner;
        if (m_model)
            m_model->setParent(owner);
    }

private:
    AppEnvironment& m_environment;
    SessionStore& m_session;
    QPointer<QObject> m_owner;
    QPointer<POSViewModel> m_model;
};

MainWindow::MainWindow(AppEnvironment& environment, SessionStore& session, MarketRegistry& registry,
                       MarketSwitcher& switcher, const QString& storeName, QWidget* parent)
    : QMainWindow(parent)
    , m_environment(environment)
    , m_session(session)
    , m_registry(registry)
    , m_switcher(switcher)
{
    setWindowTitle(tr("Brindle — %1").arg(storeName));
    setMinimumSize(1100, 720);
    installMenus();
    environment.setPrintPanel(std::make_unique<DialogPrintPanel>(this));
    m_rootView = new RootView(environment, session, screens(), this);
    setCentralWidget(m_rootView);
}

void MainWindow::installMenus()
{
    menuBar()->addMenu(new POSCommands(m_actionBus, this));
    auto* store = new MarketCommands(m_registry, m_switcher, m_actionBus, m_session, this,
                                     [this](std::function<void()> proceed) { askToLeave(std::move(proceed)); });
    menuBar()->addMenu(store);
    store->addSeparator();
    // Through close(), so unsaved edits are asked about first.
    QAction* quit = store->addAction(QStringLiteral("Quit"));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);
    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    connect(help->addAction(QStringLiteral("About Brindle")), &QAction::triggered, this, &MainWindow::showAbout);
    connect(&m_actionBus, &POSActionBus::showNewMarketSheetChanged, this, [this](bool show) {
        if (show)
            showNewMarketSheet();
    });
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, QStringLiteral("About Brindle"),
                       QStringLiteral("<h3>Brindle %1</h3><p>Point of sale for a small shop.</p><p>This store: %2</p>")
                           .arg(AppInfo::version(),
                                QDir::toNativeSeparators(m_environment.modelContext().connection().path())
                                    .toHtmlEscaped()));
}

void MainWindow::showNewMarketSheet()
{
    // Making and switching stores is an admin's, however the request came.
    if (!m_session.isAdmin()) {
        m_actionBus.setShowNewMarketSheet(false);
        return;
    }
    auto* sheet = new NewMarketSheet(m_registry, m_switcher, this,
                                     [this](std::function<void()> proceed) { askToLeave(std::move(proceed)); });
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &QDialog::finished, this, [this] { m_actionBus.setShowNewMarketSheet(false); });
    sheet->open();
}

RootView::ScreenFactories MainWindow::screens()
{
    return {
        [this] { return new FirstRunSetupView(m_environment, m_session); },
        [this] { return new LoginView(m_environment.authService(), m_session, m_environment.attemptThrottle()); },
        [this] {
            auto counter = std::make_shared<CounterModelHolder>(m_environment, m_session);
            auto* navigation = new MainNavigationView(m_environment, m_session, m_actionBus, sectionScreens(counter));
            counter->setOwner(navigation);
            return navigation;
        },
    };
}

SectionScreens MainWindow::sectionScreens(const std::shared_ptr<CounterModelHolder>& counter)
{
    SectionScreens screens;
    screens.add(AppSection::dashboard, [this] { return new DashboardView(m_environment, m_session); });
    screens.add(AppSection::pos, [this, counter] {
        return new POSWorkspaceView(m_environment, m_session, counter->model(), m_actionBus);
    });
    screens.add(AppSection::appointments, [this, counter] {
        return new AppointmentsView(m_environment,
                                    [this, counter](const Appointment& booked) { ringUp(*counter, booked); });
    });
    screens.add(AppSection::products, [this] {
        auto* view = new ProductsView(m_environment, m_session);
        ScreenFind::offer(m_actionBus, view, view->searchField());
        return view;
    });
    screens.add(AppSection::inventory, [this] {
        return new InventoryView(m_environment.modelContext(), m_environment.inventoryService(), m_session);
    });
    screens.add(AppSection::suppliers, [this] { return new SuppliersView(m_environment); });
    screens.add(AppSection::customers, [this] { return new CustomersView(m_environment, m_session); });
    screens.add(AppSection::salesHistory, [this] { return new SalesHistoryView(m_environment, m_session); });
    screens.add(AppSection::refunds, [this] { return new RefundView(m_environment, m_session); });
    screens.add(AppSection::staff, [this] { return new StaffView(m_environment, m_session); });
    screens.add(AppSection::till, [this] { return new TillView(m_environment, m_session); });
    screens.add(AppSection::auditLog,
                [this] { return new AuditLogView(m_environment, m_session, m_registry); });
    screens.add(AppSection::settings, [this] { return new SettingsView(m_environment, m_session, m_actionBus); });
    return screens;
}

void MainWindow::ringUp(CounterModelHolder& counter, const Appointment& appointment)
{
    POSViewModel& pos = counter.model();
    if (pos.ringUp(appointment)) {
        m_actionBus.setRequestedSection(AppSection::pos);
        return;
    }
    // The workspace isn't on show to tell it: the book says it.
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Heads up"), pos.errorMessage().value_or(QString()),
                                QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    pos.clearError();
    box->open();
}

void MainWindow::askToLeave(std::function<void()> proceed)
{
    m_rootView->askToLeave(std::move(proceed));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_mayClose || !m_rootView->hasUnsavedEdits()) {
        QMainWindow::closeEvent(event);
        return;
    }
    // The question is answered after this event is over: the window closes again then.
    event->ignore();
    askToLeave([this] {
        m_mayClose = true;
        close();
    });
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_hasAppeared)
        return;
    m_hasAppeared = true;
    // Nobody is signed in yet: every launch starts signed out, with a shift left open still shown.
    try {
        m_session.setSettings(m_environment.loadOrCreateSettings());
        m_session.setCurrentTillShift(m_environment.tillService().currentOpenShift());
    } catch (const Refusal& refusal) {
        // Never defaults in place of what couldn't be read: the screens that need it say so again.
        auto* box = new QMessageBox(QMessageBox::Warning, windowTitle(), refusal.description(),
                                    QMessageBox::Ok, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    }
}

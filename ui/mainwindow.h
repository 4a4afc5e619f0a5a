#pragma once

#include "ui/navigation/posactionbus.h"
#include "ui/navigation/sectionscreens.h"
#include "ui/rootview.h"

#include <memory>

#include <QMainWindow>

class AppEnvironment;
class Appointment;
class CounterModelHolder;
class MarketRegistry;
class MarketSwitcher;
class SessionStore;

// The one window of the program, showing one store; its content is the RootView.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(AppEnvironment& environment, SessionStore& session, MarketRegistry& registry,
               MarketSwitcher& switcher, const QString& storeName, QWidget* parent = nullptr);

    RootView* rootView() const { return m_rootView; }
    POSActionBus& actionBus() { return m_actionBus; }

protected:
    void showEvent(QShowEvent* event) override;
    // Unsaved edits on the screen on show are saved or dropped knowingly before the window goes.
    void closeEvent(QCloseEvent* event) override;

private:
    void installMenus();
    void showNewMarketSheet();
    // Help ▸ About: the version and the file of the store on show.
    void showAbout();
    void askToLeave(std::function<void()> proceed);
    RootView::ScreenFactories screens();
    // The main navigation's sections that have a screen; a section joins the sidebar once its
    // screen is registered here. The counter's state is the signed-in window's.
    SectionScreens sectionScreens(const std::shared_ptr<CounterModelHolder>& counter);
    void ringUp(CounterModelHolder& counter, const Appointment& appointment);

    AppEnvironment& m_environment;
    SessionStore& m_session;
    MarketRegistry& m_registry;
    MarketSwitcher& m_switcher;
    POSActionBus m_actionBus;
    RootView* m_rootView;
    bool m_hasAppeared = false;
    bool m_mayClose = false;
};

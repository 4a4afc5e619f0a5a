#include "ui/mainwindow.h"

#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "ui/welcomepanel.h"

MainWindow::MainWindow(AppEnvironment& environment, SessionStore& session, const QString& storeName,
                       QWidget* parent)
    : QMainWindow(parent)
    , m_environment(environment)
    , m_session(session)
{
    setWindowTitle(tr("Tallyrun — %1").arg(storeName));
    setMinimumSize(1100, 720);
    m_rootView = new RootView(environment, session, screens(storeName), this);
    setCentralWidget(m_rootView);
}

RootView::ScreenFactories MainWindow::screens(const QString& storeName)
{
    auto welcome = [this, storeName] { return new WelcomePanel(m_session, storeName); };
    return {welcome, welcome, welcome};
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_hasAppeared)
        return;
    m_hasAppeared = true;
    // Nobody is signed in yet: every launch starts signed out, with a shift left open still shown.
    m_session.setSettings(m_environment.loadOrCreateSettings());
    m_session.setCurrentTillShift(m_environment.tillService().currentOpenShift());
}

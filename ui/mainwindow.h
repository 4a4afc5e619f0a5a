#pragma once

#include "ui/rootview.h"

#include <QMainWindow>

class AppEnvironment;
class SessionStore;

// The one window of the program, showing one store; its content is the RootView.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(AppEnvironment& environment, SessionStore& session, const QString& storeName,
               QWidget* parent = nullptr);

    RootView* rootView() const { return m_rootView; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    RootView::ScreenFactories screens(const QString& storeName);

    AppEnvironment& m_environment;
    SessionStore& m_session;
    RootView* m_rootView;
    bool m_hasAppeared = false;
};

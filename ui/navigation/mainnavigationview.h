#pragma once

#include "ui/navigation/mainnavigationmodel.h"

#include <QMap>
#include <QWidget>

class AppEnvironment;
class QLabel;
class QListWidget;
class QPushButton;
class QStackedWidget;

// The signed-in window: a sidebar of the sections this user may open, the chosen section's screen
// beside it, and who is signed in at the sidebar's foot with "Sign Out".
class MainNavigationView : public QWidget {
    Q_OBJECT

public:
    MainNavigationView(AppEnvironment& environment, SessionStore& session, POSActionBus& bus,
                       SectionScreens screens, QWidget* parent = nullptr);

    MainNavigationModel& model() { return m_model; }
    QListWidget* sidebar() const { return m_sidebar; }
    QPushButton* signOutButton() const { return m_signOut; }
    // The screen on show: a section's, or the note shown while there is none.
    QWidget* currentScreen() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void showSections();
    void showSelection();

    MainNavigationModel m_model;
    QListWidget* m_sidebar;
    QPushButton* m_signOut;
    QStackedWidget* m_content;
    // Each section's screen is made on first visit and kept, so what was typed there survives
    // moving between sections.
    QMap<AppSection, QWidget*> m_screens;
};

#pragma once

#include "ui/navigation/editingscreen.h"
#include "ui/navigation/mainnavigationmodel.h"

#include <QKeySequence>
#include <QMap>
#include <QWidget>

class AppEnvironment;
class QLabel;
class QListWidget;
class QPushButton;
class QStackedWidget;

// The signed-in window: a sidebar of the sections this user may open, the chosen section's screen
// beside it, and who is signed in at the sidebar's foot with "Sign Out". Leaving a screen with
// unsaved edits (another section, Sign Out) asks that screen first.
class MainNavigationView : public QWidget, public EditingScreen {
    Q_OBJECT

public:
    // Ctrl+1 ... Ctrl+9 open the sidebar's first nine sections, in its order.
    static constexpr int sectionKeyCount = 9;
    static QKeySequence sectionKey(int key);

    MainNavigationView(AppEnvironment& environment, SessionStore& session, POSActionBus& bus,
                       SectionScreens screens, QWidget* parent = nullptr);

    MainNavigationModel& model() { return m_model; }
    QListWidget* sidebar() const { return m_sidebar; }
    QPushButton* signOutButton() const { return m_signOut; }
    // The screen on show: a section's, or the note shown while there is none.
    QWidget* currentScreen() const;

    // Those of the screen on show.
    bool hasUnsavedEdits() const override;
    void askToLeave(std::function<void()> proceed) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addSectionKeys();
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

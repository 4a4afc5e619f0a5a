#pragma once

#include <QWidget>

class QLabel;
class SessionStore;

// The store's name card: who the business is and which store this window has open, greeting the
// person signed in by name.
class WelcomePanel : public QWidget {
    Q_OBJECT

public:
    WelcomePanel(SessionStore& session, const QString& storeName, QWidget* parent = nullptr);

private:
    void refresh();

    SessionStore& m_session;
    QLabel* m_heading;
    QLabel* m_businessName;
    QLabel* m_storeName;
};

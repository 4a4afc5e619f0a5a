#pragma once

#include "access/firstrunsetupmodel.h"

#include <QWidget>

class AppEnvironment;
class ErrorLabel;
class QLineEdit;
class QPushButton;

// The first screen of a new store: names the business and makes the first admin, who is then
// signed in.
class FirstRunSetupView : public QWidget {
    Q_OBJECT

public:
    enum class Field { businessName, adminName, adminUsername, adminPassword, confirmPassword };

    FirstRunSetupView(AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    FirstRunSetupModel& model() { return m_model; }
    QLineEdit* field(Field field) const;
    QPushButton* createButton() const { return m_create; }
    ErrorLabel* errorLabel() const { return m_error; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    FirstRunSetupModel m_model;
    QList<QLineEdit*> m_fields;
    ErrorLabel* m_error;
    QPushButton* m_create;
};

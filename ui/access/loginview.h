#pragma once

#include "access/loginviewmodel.h"

#include <QWidget>

class ErrorLabel;
class QLabel;
class QLineEdit;
class QPushButton;
class SegmentedControl;

// The sign-in screen: username and password, or a Quick PIN, and one "Sign In".
class LoginView : public QWidget {
    Q_OBJECT

public:
    enum class Field { username, password, pin };

    LoginView(AuthServicing& auth, SessionStore& session, AttemptThrottle& throttle, QWidget* parent = nullptr);

    LoginViewModel& model() { return m_model; }
    QLineEdit* field(Field field) const;
    QLabel* titleLabel() const { return m_title; }
    SegmentedControl* methodPicker() const { return m_method; }
    QPushButton* signInButton() const { return m_signIn; }
    ErrorLabel* errorLabel() const { return m_error; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    QLineEdit* firstField() const;
    void showMethod();
    void signIn();

    SessionStore& m_session;
    LoginViewModel m_model;
    QLabel* m_title;
    SegmentedControl* m_method;
    QWidget* m_passwordForm;
    QWidget* m_pinForm;
    QLineEdit* m_username;
    QLineEdit* m_password;
    QLineEdit* m_pin;
    ErrorLabel* m_error;
    QPushButton* m_signIn;
};

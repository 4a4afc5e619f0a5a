#include "ui/access/loginview.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

LoginView::LoginView(AuthServicing& auth, SessionStore& session, AttemptThrottle& throttle, QWidget* parent)
    : QWidget(parent)
    , m_session(session)
    , m_model(auth, session, throttle)
{
    auto* card = new QWidget(this);
    Theme::markCard(card);
    card->setFixedWidth(400);

    m_title = Theme::label(QString(), Theme::Text::title, card);
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setWordWrap(true);
    auto* subtitle = Theme::label(QStringLiteral("Sign in to open the till"), Theme::Text::subtitle, card);
    subtitle->setAlignment(Qt::AlignCenter);

    m_method = new SegmentedControl({QStringLiteral("Password"), QStringLiteral("Quick PIN")}, card);

    m_passwordForm = new QWidget(card);
    m_username = new QLineEdit(m_passwordForm);
    m_password = new QLineEdit(m_passwordForm);
    m_password->setEchoMode(QLineEdit::Password);
    auto* passwordLayout = new QVBoxLayout(m_passwordForm);
    passwordLayout->setContentsMargins(0, 0, 0, 0);
    addLabelledField(passwordLayout, QStringLiteral("Username"), m_username);
    addLabelledField(passwordLayout, QStringLiteral("Password"), m_password);

    m_pinForm = new QWidget(card);
    m_pin = new QLineEdit(m_pinForm);
    m_pin->setEchoMode(QLineEdit::Password);
    m_pin->setInputMethodHints(Qt::ImhDigitsOnly | Qt::ImhSensitiveData);
    auto* pinLayout = new QVBoxLayout(m_pinForm);
    pinLayout->setContentsMargins(0, 0, 0, 0);
    addLabelledField(pinLayout, QStringLiteral("PIN"), m_pin);

    m_error = new ErrorLabel(card);
    m_signIn = new QPushButton(QStringLiteral("Sign In"), card);
    Theme::markPrimary(m_signIn);

    auto* cardLayout = new QVBoxLayout(card);
    cardLayout->setContentsMargins(36, 32, 36, 32);
    cardLayout->setSpacing(14);
    cardLayout->addWidget(m_title);
    cardLayout->addWidget(subtitle);
    cardLayout->addSpacing(6);
    cardLayout->addWidget(m_method);
    cardLayout->addWidget(m_passwordForm);
    cardLayout->addWidget(m_pinForm);
    cardLayout->addWidget(m_error);
    cardLayout->addSpacing(4);
    cardLayout->addWidget(m_signIn);

    // Stretches, not an alignment, centre the card: an aligned widget is given its size hint, which
    // a title wrapped onto two lines outgrows, and the fields below it get squeezed.
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(card);
    row->addStretch();
    auto* layout = new QVBoxLayout(this);
    // A little above the middle, where the eye goes first.
    layout->addStretch(2);
    layout->addLayout(row);
    layout->addStretch(3);

    setTabOrder(m_method->segment(0), m_method->segment(1));
    setTabOrder(m_method->segment(1), m_username);
    setTabOrder(m_username, m_password);
    setTabOrder(m_password, m_pin);
    setTabOrder(m_pin, m_signIn);

    bindText(m_username, m_model, &LoginViewModel::username, &LoginViewModel::setUsername,
             &LoginViewModel::usernameChanged);
    bindText(m_password, m_model, &LoginViewModel::password, &LoginViewModel::setPassword,
             &LoginViewModel::passwordChanged);
    bindText(m_pin, m_model, &LoginViewModel::pin, &LoginViewModel::setPin, &LoginViewModel::pinChanged);
    connect(m_method, &SegmentedControl::currentIndexChanged, &m_model,
            [this](int index) { m_model.setIsUsingPin(index == 1); });
    connect(&m_model, &LoginViewModel::isUsingPinChanged, this, &LoginView::showMethod);
    connect(&m_model, &LoginViewModel::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    // The settings record arrives when the window first appears, after this screen was made.
    connect(&m_session, &SessionStore::settingsChanged, this, [this] { m_title->setText(m_model.title()); });

    connect(m_username, &QLineEdit::returnPressed, m_password, [this] { m_password->setFocus(); });
    connect(m_password, &QLineEdit::returnPressed, this, &LoginView::signIn);
    connect(m_pin, &QLineEdit::returnPressed, this, &LoginView::signIn);
    connect(m_signIn, &QPushButton::clicked, this, &LoginView::signIn);

    m_title->setText(m_model.title());
    showMethod();
}

QLineEdit* LoginView::field(Field field) const
{
    switch (field) {
    case Field::username:
        return m_username;
    case Field::password:
        return m_password;
    case Field::pin:
        return m_pin;
    }
    Q_UNREACHABLE();
}

void LoginView::showMethod()
{
    const bool usingPin = m_model.isUsingPin();
    m_method->setCurrentIndex(usingPin ? 1 : 0);
    m_passwordForm->setVisible(!usingPin);
    m_pinForm->setVisible(usingPin);
    firstField()->setFocus();
}

QLineEdit* LoginView::firstField() const
{
    return m_model.isUsingPin() ? m_pin : m_username;
}

void LoginView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // Not when the window is merely restored: the person may be halfway down the form.
    if (!event->spontaneous())
        firstField()->setFocus();
}

void LoginView::signIn()
{
    const bool usingPin = m_model.isUsingPin();
    if (usingPin ? m_model.loginWithPin() : m_model.loginWithPassword())
        return;
    // The wrong entry stays, selected, so typing again replaces it.
    QLineEdit* secret = usingPin ? m_pin : m_password;
    secret->setFocus();
    secret->selectAll();
}

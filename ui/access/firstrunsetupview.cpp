#include "ui/access/firstrunsetupview.h"

#include "environment/appenvironment.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

FirstRunSetupView::FirstRunSetupView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QWidget(parent)
    , m_model(
          environment.modelContext(), [&environment] { return environment.loadOrCreateSettings(); }, session)
{
    auto* card = new QWidget(this);
    Theme::markCard(card);
    card->setFixedWidth(480);

    auto* title = Theme::label(QStringLiteral("Welcome to Brindle"), Theme::Text::title, card);
    auto* note =
        Theme::label(QStringLiteral("Set up your store and your own admin login to get started. No demo "
                                    "accounts, no sample data — this is your real store from the "
                                    "first screen."),
                     Theme::Text::note, card);

    for (int index = 0; index < 5; ++index)
        m_fields.append(new QLineEdit(card));
    field(Field::adminPassword)->setEchoMode(QLineEdit::Password);
    field(Field::confirmPassword)->setEchoMode(QLineEdit::Password);

    auto* cardLayout = new QVBoxLayout(card);
    cardLayout->setContentsMargins(36, 32, 36, 32);
    cardLayout->setSpacing(12);
    cardLayout->addWidget(title);
    cardLayout->addWidget(note);
    cardLayout->addSpacing(8);
    addLabelledField(cardLayout, QStringLiteral("Business name"), field(Field::businessName));
    cardLayout->addSpacing(10);
    cardLayout->addWidget(Theme::label(QStringLiteral("Your Admin Account"), Theme::Text::heading, card));
    addLabelledField(cardLayout, QStringLiteral("Your name"), field(Field::adminName));
    addLabelledField(cardLayout, QStringLiteral("Username"), field(Field::adminUsername));
    addLabelledField(cardLayout, QStringLiteral("Password (6+ characters)"), field(Field::adminPassword));
    addLabelledField(cardLayout, QStringLiteral("Confirm password"), field(Field::confirmPassword));
    m_error = new ErrorLabel(card);
    cardLayout->addWidget(m_error);
    cardLayout->addSpacing(4);
    // "&&" shows one ampersand; a single one would mark a mnemonic and vanish.
    m_create = new QPushButton(QStringLiteral("Create Account && Continue"), card);
    Theme::markPrimary(m_create);
    cardLayout->addWidget(m_create);

    auto* layout = new QVBoxLayout(this);
    // A little above the middle, where the eye goes first.
    layout->addStretch(2);
    layout->addWidget(card, 0, Qt::AlignHCenter);
    layout->addStretch(3);

    using Model = FirstRunSetupModel;
    bindText(field(Field::businessName), m_model, &Model::businessName, &Model::setBusinessName,
             &Model::businessNameChanged);
    bindText(field(Field::adminName), m_model, &Model::adminName, &Model::setAdminName,
             &Model::adminNameChanged);
    bindText(field(Field::adminUsername), m_model, &Model::adminUsername, &Model::setAdminUsername,
             &Model::adminUsernameChanged);
    bindText(field(Field::adminPassword), m_model, &Model::adminPassword, &Model::setAdminPassword,
             &Model::adminPasswordChanged);
    bindText(field(Field::confirmPassword), m_model, &Model::confirmPassword, &Model::setConfirmPassword,
             &Model::confirmPasswordChanged);
    connect(&m_model, &Model::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });

    // Return walks down the form like Tab, and on the last field creates the account.
    for (int index = 0; index + 1 < m_fields.size(); ++index) {
        QLineEdit* next = m_fields[index + 1];
        setTabOrder(m_fields[index], next);
        connect(m_fields[index], &QLineEdit::returnPressed, next, [next] { next->setFocus(); });
    }
    setTabOrder(m_fields.last(), m_create);
    connect(m_fields.last(), &QLineEdit::returnPressed, m_create, &QPushButton::click);
    connect(m_create, &QPushButton::clicked, &m_model, &Model::create);
}

void FirstRunSetupView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // Not when the window is merely restored: the person may be halfway down the form.
    if (!event->spontaneous())
        m_fields.first()->setFocus();
}

QLineEdit* FirstRunSetupView::field(Field field) const
{
    return m_fields[static_cast<int>(field)];
}

#include "ui/welcomepanel.h"

#include "startup/sessionstore.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

namespace {
QLabel* makeLabel(int pointSizeDelta, bool bold, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() + pointSizeDelta);
    font.setBold(bold);
    label->setFont(font);
    return label;
}
} // namespace

WelcomePanel::WelcomePanel(SessionStore& session, const QString& storeName, QWidget* parent)
    : QWidget(parent)
    , m_session(session)
{
    auto* card = new QFrame(this);
    card->setObjectName(QStringLiteral("welcomeCard"));
    card->setFixedWidth(520);
    card->setStyleSheet(
        QStringLiteral("#welcomeCard { background: palette(base); border: 1px solid palette(mid);"
                       " border-radius: 12px; }"));

    m_heading = makeLabel(12, true, card);
    m_businessName = makeLabel(3, false, card);
    m_storeName = makeLabel(0, false, card);
    m_storeName->setText(storeName);
    m_storeName->setForegroundRole(QPalette::PlaceholderText);

    auto* rule = new QFrame(card);
    rule->setFrameShape(QFrame::HLine);
    rule->setForegroundRole(QPalette::Mid);

    auto* cardLayout = new QVBoxLayout(card);
    cardLayout->setContentsMargins(40, 36, 40, 36);
    cardLayout->setSpacing(12);
    cardLayout->addWidget(m_heading);
    cardLayout->addWidget(rule);
    cardLayout->addWidget(m_businessName);
    cardLayout->addWidget(m_storeName);

    auto* layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(card, 0, Qt::AlignHCenter);
    layout->addStretch();

    connect(&m_session, &SessionStore::settingsChanged, this, &WelcomePanel::refresh);
    connect(&m_session, &SessionStore::currentUserChanged, this, &WelcomePanel::refresh);
    refresh();
}

void WelcomePanel::refresh()
{
    const Ref<User> user = m_session.currentUser();
    m_heading->setText(user ? tr("Welcome, %1").arg(user->name()) : tr("Welcome to Tallyrun"));
    const Ref<AppSettings> settings = m_session.settings();
    m_businessName->setText(settings ? settings->businessName() : QString());
    m_businessName->setVisible(settings != nullptr);
}

#include "ui/stores/newmarketsheet.h"

#include "stores/marketswitcher.h"
#include "stores/newmarketmodel.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QLineEdit* makeField(const char* name, QWidget* parent, bool secret = false)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(QString::fromLatin1(name));
    if (secret)
        field->setEchoMode(QLineEdit::Password);
    return field;
}

QPushButton* makeButton(const QString& text, const char* name, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

QHBoxLayout* makeButtonRow(QPushButton* secondary, QPushButton* primary)
{
    Theme::markPrimary(primary);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch();
    row->addWidget(secondary);
    row->addWidget(primary);
    return row;
}

QVBoxLayout* makePageLayout(QWidget* page)
{
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    return layout;
}
} // namespace

NewMarketSheet::NewMarketSheet(MarketRegistry& registry, MarketSwitcher& switcher, QWidget* parent,
                               EditingScreen::LeaveCheck askToLeave)
    : QDialog(parent)
    , m_switcher(switcher)
    , m_askToLeave(std::move(askToLeave))
    , m_model(new NewMarketModel(registry, {}, this))
{
    setWindowTitle(QStringLiteral("New Store"));
    setWindowModality(Qt::WindowModal);

    // Two pages in one layout rather than a QStackedWidget, which would keep the height of the
    // taller: only the page shown takes room.
    m_form = makeForm();
    m_created = makeCreatedPanel();
    m_form->setFixedWidth(420);
    m_created->setFixedWidth(420);
    m_created->hide();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->addWidget(m_form);
    layout->addWidget(m_created);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    // Only once the button is inside the dialog: before that the dialog doesn't learn of it and
    // makes the first button in the focus chain, Cancel, the default.
    m_create->setDefault(true);

    connect(m_model, &NewMarketModel::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model->errorMessage()); });
    connect(m_model, &NewMarketModel::createdMarketChanged, this, &NewMarketSheet::showCreated);
    m_marketName->setFocus();
}

bool NewMarketSheet::isShowingCreated() const
{
    return m_created->isVisibleTo(this);
}

QWidget* NewMarketSheet::makeForm()
{
    auto* page = new QWidget;
    m_marketName = makeField("marketName", page);
    m_adminName = makeField("adminName", page);
    m_adminUsername = makeField("adminUsername", page);
    m_adminPassword = makeField("adminPassword", page, true);
    m_confirmPassword = makeField("confirmPassword", page, true);
    m_error = new ErrorLabel(page);
    m_error->setObjectName(QStringLiteral("errorMessage"));
    m_cancel = makeButton(QStringLiteral("Cancel"), "cancel", page);
    m_create = makeButton(QStringLiteral("Create"), "create", page);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_create, &QPushButton::clicked, this, &NewMarketSheet::create);

    QVBoxLayout* layout = makePageLayout(page);
    layout->addWidget(Theme::label(QStringLiteral("New Store"), Theme::Text::title, page));
    layout->addWidget(
        Theme::label(QStringLiteral("Creates a completely separate business — its own products, sales, "
                                    "customers, and logins. Nothing here is shared with your other stores."),
                     Theme::Text::note, page));
    layout->addSpacing(4);
    addLabelledField(layout, QStringLiteral("Store name"), m_marketName);
    layout->addSpacing(8);
    layout->addWidget(Theme::label(QStringLiteral("Its First Admin"), Theme::Text::heading, page));
    addLabelledField(layout, QStringLiteral("Admin's name"), m_adminName);
    addLabelledField(layout, QStringLiteral("Username"), m_adminUsername);
    addLabelledField(layout, QStringLiteral("Password (6+ characters)"), m_adminPassword);
    addLabelledField(layout, QStringLiteral("Confirm password"), m_confirmPassword);
    layout->addWidget(m_error);
    layout->addSpacing(8);
    layout->addLayout(makeButtonRow(m_cancel, m_create));

    QWidget* order[] = {m_marketName,      m_adminName, m_adminUsername, m_adminPassword,
                        m_confirmPassword, m_cancel,    m_create};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
    return page;
}

QWidget* NewMarketSheet::makeCreatedPanel()
{
    auto* page = new QWidget;
    m_createdMessage = new QLabel(page);
    m_createdMessage->setWordWrap(true);
    m_createdMessage->setObjectName(QStringLiteral("createdMessage"));
    m_createdMessage->setTextFormat(Qt::PlainText); // the store's name is the user's text
    m_later = makeButton(QStringLiteral("Later"), "later", page);
    m_switch = makeButton(QStringLiteral("Switch && Relaunch"), "switchAndRelaunch", page);
    connect(m_later, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_switch, &QPushButton::clicked, this, &NewMarketSheet::switchToCreated);

    QVBoxLayout* layout = makePageLayout(page);
    layout->addWidget(Theme::label(QStringLiteral("Store Created"), Theme::Text::title, page));
    layout->addWidget(m_createdMessage);
    layout->addSpacing(8);
    layout->addLayout(makeButtonRow(m_later, m_switch));
    return page;
}

void NewMarketSheet::create()
{
    m_model->setMarketName(m_marketName->text());
    m_model->setAdminName(m_adminName->text());
    m_model->setAdminUsername(m_adminUsername->text());
    m_model->setAdminPassword(m_adminPassword->text());
    m_model->setConfirmPassword(m_confirmPassword->text());
    m_model->create();
}

void NewMarketSheet::showCreated()
{
    const std::optional<MarketInfo> market = m_model->createdMarket();
    Q_ASSERT(market);
    m_createdMessage->setText(
        QStringLiteral("\"%1\" is ready. Switch to it now to start using it — the app needs to restart "
                       "to load its data.")
            .arg(market->name));
    m_form->hide();
    m_created->show();
    m_switch->setDefault(true);
    m_switch->setFocus();
}

void NewMarketSheet::switchToCreated()
{
    // Closed first: the question, if any, is about the window behind.
    MarketSwitcher& switcher = m_switcher;
    const QUuid id = m_model->createdMarket()->id;
    EditingScreen::LeaveCheck askToLeave = m_askToLeave;
    accept();
    if (askToLeave)
        askToLeave([&switcher, id] { switcher.switchTo(id); });
    else
        switcher.switchTo(id);
}

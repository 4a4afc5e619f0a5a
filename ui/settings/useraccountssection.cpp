#include "ui/settings/useraccountssection.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/settings/pindialog.h"
#include "ui/settings/usereditsheet.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// The role picker's segments, in the order they are shown.
constexpr int adminSegment = 0;
constexpr int cashierSegment = 1;
} // namespace

UserAccountsSection::UserAccountsSection(ModelContext& context, AuthServicing& auth, SessionStore& session,
                                         QWidget* parent)
    : SettingsSection(QStringLiteral("User Accounts"), parent)
    , m_model(context, auth, session)
{
    QVBoxLayout* list = addCard();
    m_grid = new QGridLayout;
    m_grid->setHorizontalSpacing(20);
    m_grid->setVerticalSpacing(14);
    m_grid->setColumnStretch(0, 1);
    list->addLayout(m_grid);
    // A refused switch says why where it was flicked, not in the form below.
    m_listError = new ErrorLabel(this);
    list->addWidget(m_listError);

    buildForm();

    connect(&m_model, &UserAccountsViewModel::usersChanged, this, &UserAccountsSection::refreshRows);
    connect(&m_model, &UserAccountsViewModel::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    refreshRows();
}

void UserAccountsSection::buildForm()
{
    addSubheading(QStringLiteral("Add User"));
    QVBoxLayout* card = addCard();
    // Labels beside the fields, centred on them.
    auto* form = new QGridLayout;
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(10);
    form->setColumnStretch(2, 1);
    card->addLayout(form);
    const auto addRow = [this, form](const QString& label, QWidget* field) {
        const int row = form->rowCount();
        if (!label.isEmpty()) {
            auto* caption = new QLabel(label, this);
            caption->setBuddy(field);
            form->addWidget(caption, row, 0, Qt::AlignLeft | Qt::AlignVCenter);
        }
        form->addWidget(field, row, 1);
    };

    const QStringList labels{QStringLiteral("Full Name"), QStringLiteral("Username"),
                             QStringLiteral("Password"), QStringLiteral("PIN (optional)")};
    for (const QString& label : labels) {
        auto* edit = new QLineEdit(this);
        edit->setAccessibleName(label);
        edit->setMinimumWidth(320);
        addRow(label, edit);
        m_fields.append(edit);
    }
    field(Field::password)->setEchoMode(QLineEdit::Password);
    field(Field::pin)->setEchoMode(QLineEdit::Password);
    field(Field::pin)->setInputMethodHints(Qt::ImhDigitsOnly | Qt::ImhSensitiveData);

    m_role = new SegmentedControl({QStringLiteral("Admin"), QStringLiteral("Cashier")}, this);
    addRow(QStringLiteral("Role"), m_role);
    m_error = new ErrorLabel(this);
    addRow(QString(), m_error);
    m_create = new QPushButton(QStringLiteral("Create User"), this);
    Theme::markPrimary(m_create);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addWidget(m_create);
    buttonRow->addStretch();
    form->addLayout(buttonRow, form->rowCount(), 1);

    using Model = UserAccountsViewModel;
    bindText(field(Field::name), m_model, &Model::newUserName, &Model::setNewUserName,
             &Model::newUserNameChanged);
    bindText(field(Field::username), m_model, &Model::newUsername, &Model::setNewUsername,
             &Model::newUsernameChanged);
    bindText(field(Field::password), m_model, &Model::newPassword, &Model::setNewPassword,
             &Model::newPasswordChanged);
    bindText(field(Field::pin), m_model, &Model::newPin, &Model::setNewPin, &Model::newPinChanged);
    auto showRole = [this] {
        m_role->setCurrentIndex(m_model.newRole() == UserRole::admin ? adminSegment : cashierSegment);
    };
    showRole();
    connect(&m_model, &Model::newRoleChanged, m_role, showRole);
    connect(m_role, &SegmentedControl::currentIndexChanged, &m_model, [this](int index) {
        m_model.setNewRole(index == adminSegment ? UserRole::admin : UserRole::cashier);
    });

    // Return walks down the fields like Tab; on the last one it creates the user.
    for (int index = 0; index + 1 < m_fields.size(); ++index) {
        QLineEdit* next = m_fields[index + 1];
        connect(m_fields[index], &QLineEdit::returnPressed, next, [next] { next->setFocus(); });
    }
    connect(m_fields.last(), &QLineEdit::returnPressed, m_create, &QPushButton::click);
    connect(m_create, &QPushButton::clicked, this, [this] {
        m_listError->setMessage(std::nullopt);
        // Ready for the next person at once.
        if (m_model.createUser())
            field(Field::name)->setFocus();
    });
}

void UserAccountsSection::refreshRows()
{
    const QList<UserAccountRow> rows = m_model.rows();
    QSet<QUuid> listed;
    for (const UserAccountRow& row : rows) {
        const QUuid id = row.user->id();
        listed.insert(id);
        auto found = m_rows.find(id);
        if (found == m_rows.end())
            found = m_rows.insert(id, makeRow(row.user, m_nextGridRow++));
        const Row& widgets = *found;
        widgets.name->setText(row.name);
        widgets.you->setVisible(row.isSignedInUser);
        widgets.username->setText(row.username);
        widgets.role->setText(row.roleLabel);
        widgets.pin->setText(row.pinLabel);
        widgets.active->setChecked(row.isActive);
        widgets.active->setEnabled(!row.isSignedInUser);
        widgets.active->setToolTip(row.isSignedInUser ? UserAccountsViewModel::signedInSwitchHelp()
                                                      : QString());
    }
    // An account deleted from outside the program.
    for (auto it = m_rows.begin(); it != m_rows.end();) {
        if (listed.contains(it.key())) {
            ++it;
            continue;
        }
        for (QWidget* widget : std::initializer_list<QWidget*>{it->name, it->you, it->username, it->role,
                                                               it->pin, it->edit, it->setPin, it->active})
            widget->deleteLater();
        it = m_rows.erase(it);
    }
}

UserAccountsSection::Row UserAccountsSection::makeRow(const Ref<User>& user, int gridRow)
{
    Row row{};
    row.name = Theme::label(QString(), Theme::Text::strong, this);
    row.you = new QLabel(UserAccountsViewModel::youLabel(), this);
    Theme::setKind(row.you, "badge");
    row.username = Theme::label(QString(), Theme::Text::note, this);
    row.role = new QLabel(this);
    row.pin = new QLabel(this);
    row.edit = new QPushButton(QStringLiteral("Edit…"), this);
    row.edit->setToolTip(QStringLiteral("Change the name or role, or set a new password"));
    row.setPin = new QPushButton(QStringLiteral("Set PIN…"), this);
    row.active = new QCheckBox(QStringLiteral("Active"), this);

    auto* nameLine = new QHBoxLayout;
    nameLine->setSpacing(8);
    nameLine->addWidget(row.name);
    nameLine->addWidget(row.you);
    nameLine->addStretch();
    auto* who = new QVBoxLayout;
    who->setSpacing(2);
    who->addLayout(nameLine);
    who->addWidget(row.username);

    m_grid->addLayout(who, gridRow, 0);
    m_grid->addWidget(row.role, gridRow, 1);
    m_grid->addWidget(row.pin, gridRow, 2);
    m_grid->addWidget(row.edit, gridRow, 3);
    m_grid->addWidget(row.setPin, gridRow, 4);
    m_grid->addWidget(row.active, gridRow, 5);

    connect(row.edit, &QPushButton::clicked, this, [this, user] { openEditSheet(user); });
    connect(row.setPin, &QPushButton::clicked, this, [this, user] { openPinDialog(user); });
    // clicked, not toggled: only the person's own flick of the switch acts.
    connect(row.active, &QCheckBox::clicked, this, [this, user](bool isActive) {
        const bool done = m_model.setActive(user, isActive);
        m_listError->setMessage(m_model.errorMessage());
        m_error->setMessage(std::nullopt);
        if (!done)
            refreshRows();
    });
    return row;
}

QCheckBox* UserAccountsSection::activeSwitch(const QUuid& userID) const
{
    const auto found = m_rows.find(userID);
    return found == m_rows.end() ? nullptr : found->active;
}

QPushButton* UserAccountsSection::editButton(const QUuid& userID) const
{
    const auto found = m_rows.find(userID);
    return found == m_rows.end() ? nullptr : found->edit;
}

QPushButton* UserAccountsSection::setPinButton(const QUuid& userID) const
{
    const auto found = m_rows.find(userID);
    return found == m_rows.end() ? nullptr : found->setPin;
}

QLabel* UserAccountsSection::pinLabel(const QUuid& userID) const
{
    const auto found = m_rows.find(userID);
    return found == m_rows.end() ? nullptr : found->pin;
}

void UserAccountsSection::openPinDialog(const Ref<User>& user)
{
    auto* dialog = new PinDialog(
        UserAccountsViewModel::pinDialogTitle(*user), UserAccountsViewModel::pinDialogNote(*user),
        [this, user](const QString& pin) { return m_model.savePin(user, pin); }, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void UserAccountsSection::openEditSheet(const Ref<User>& user)
{
    auto* sheet = new UserEditSheet(
        UserAccountsViewModel::editTitle(*user), UserAccountsViewModel::editOf(*user),
        [this, user](const UserEdit& edit) { return m_model.saveEdit(user, edit); }, this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
}

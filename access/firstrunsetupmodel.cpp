#include "access/firstrunsetupmodel.h"

#include "access/passwordhasher.h"
#include "access/pinrules.h"
#include "clock/clock.h"
#include "records/user.h"

FirstRunSetupModel::FirstRunSetupModel(ModelContext& context, SettingsLoader loadOrCreateSettings,
                                       SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
    , m_loadOrCreateSettings(std::move(loadOrCreateSettings))
    , m_session(session)
{
}

void FirstRunSetupModel::setBusinessName(const QString& text)
{
    assign(m_businessName, text, &FirstRunSetupModel::businessNameChanged);
}

void FirstRunSetupModel::setAdminName(const QString& text)
{
    assign(m_adminName, text, &FirstRunSetupModel::adminNameChanged);
}

void FirstRunSetupModel::setAdminUsername(const QString& text)
{
    assign(m_adminUsername, text, &FirstRunSetupModel::adminUsernameChanged);
}

void FirstRunSetupModel::setAdminPassword(const QString& text)
{
    assign(m_adminPassword, text, &FirstRunSetupModel::adminPasswordChanged);
}

void FirstRunSetupModel::setConfirmPassword(const QString& text)
{
    assign(m_confirmPassword, text, &FirstRunSetupModel::confirmPasswordChanged);
}

void FirstRunSetupModel::assign(QString& field, const QString& value, void (FirstRunSetupModel::*changed)())
{
    if (value == field)
        return;
    field = value;
    Q_EMIT(this->*changed)();
}

std::optional<QString> FirstRunSetupModel::validationMessage() const
{
    if (m_businessName.trimmed().isEmpty() || m_adminName.trimmed().isEmpty() ||
        m_adminUsername.trimmed().isEmpty())
        return QStringLiteral("Enter a business name, your name, and a username.");
    // The password is never trimmed: blanks in it are part of it.
    if (characterCount(m_adminPassword) < PasswordHasher::minimumPasswordLength)
        return QStringLiteral("Password must be at least 6 characters.");
    if (m_adminPassword != m_confirmPassword)
        return QStringLiteral("Passwords don't match.");
    return std::nullopt;
}

bool FirstRunSetupModel::create()
{
    setErrorMessage(std::nullopt);
    if (const std::optional<QString> message = validationMessage()) {
        setErrorMessage(message);
        return false;
    }

    const QString salt = PasswordHasher::makeSalt();
    auto admin = std::make_shared<User>();
    admin->setName(m_adminName.trimmed());
    admin->setUsername(m_adminUsername.trimmed().toLower());
    admin->setPasswordSalt(salt);
    admin->setPasswordHash(PasswordHasher::hash(m_adminPassword, salt));
    admin->setRole(UserRole::admin);
    admin->setPin(std::nullopt);
    admin->setIsActive(true);
    admin->setCreatedAt(Clock::now());

    // The business name and the admin are saved together: a store named but without anyone to
    // sign in would come back to this screen with its name half taken.
    Ref<AppSettings> settings;
    const bool made = saveOrUndo(m_context, [&] {
        settings = m_loadOrCreateSettings();
        settings->setBusinessName(m_businessName.trimmed());
        m_context.insert(admin);
    });
    if (!made)
        return false;

    m_session.setSettings(settings);
    m_session.setCurrentUser(admin);
    return true;
}

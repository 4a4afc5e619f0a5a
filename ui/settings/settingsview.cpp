#include "ui/settings/settingsview.h"

#include "access/approvalsettingsmodel.h"
#include "environment/appenvironment.h"
#include "receipts/receiptsettingsmodel.h"
#include "startup/sessionstore.h"
#include "ui/navigation/posactionbus.h"
#include "ui/settings/approvalsettingssection.h"
#include "ui/controls/readingorder.h"
#include "ui/settings/receiptsettingssection.h"
#include "ui/settings/useraccountssection.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QVBoxLayout>

SettingsView::SettingsView(AppEnvironment& environment, SessionStore& session, POSActionBus& bus, QWidget* parent)
    : QScrollArea(parent)
    , m_environment(environment)
    , m_session(session)
    , m_bus(bus)
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(32, 28, 32, 32);
    column->setSpacing(24);
    column->addWidget(Theme::label(QStringLiteral("Settings"), Theme::Text::title, page));
    m_sections = new QVBoxLayout;
    m_sections->setSpacing(28);
    column->addLayout(m_sections);
    column->addStretch();
    setWidget(page);

    if (m_session.settings()) {
        build();
        return;
    }
    auto* loading = Theme::label(QStringLiteral("Loading settings…"), Theme::Text::note, page);
    m_sections->addWidget(loading);
    connect(&m_session, &SessionStore::settingsChanged, this, [this, loading] {
        if (m_built || !m_session.settings())
            return;
        delete loading;
        build();
    });
}

void SettingsView::build()
{
    m_built = true;
    // Sections follow in their fixed order; the rows of each write to the record and save at once.
    QList<QWidget*> sections = receiptSections();
    sections.append(approvalsSection());
    sections.append(usersSection());
    for (QWidget* section : sections) {
        section->setMaximumWidth(860);
        m_sections->addWidget(section);
    }
}

QList<QWidget*> SettingsView::receiptSections()
{
    m_receiptSettings = new ReceiptSettingsModel(m_environment.modelContext(), m_session.settings(),
                                                 m_environment.printerDirectory(), m_environment.receiptPrinter(),
                                                 m_environment.cashDrawer(), this);
    return {new ReceiptSettingsSection(*m_receiptSettings, m_session), new CashDrawerSettingsSection(*m_receiptSettings)};
}

QWidget* SettingsView::approvalsSection()
{
    auto* model = new ApprovalSettingsModel(m_environment.modelContext(), m_session.settings(),
                                            m_environment.approvalService(), this);
    auto* section = new ApprovalSettingsSection(*model);
    connect(section, &ApprovalSettingsSection::openAuditLog, this,
            [this] { m_bus.setRequestedSection(AppSection::auditLog); });
    return section;
}

QWidget* SettingsView::usersSection()
{
    return new UserAccountsSection(m_environment.modelContext(), m_environment.authService(), m_session);
}

bool SettingsView::focusNextPrevChild(bool next)
{
    return ReadingOrder::focusNext(this, next) || QScrollArea::focusNextPrevChild(next);
}

#include "ui/history/voidsalesheet.h"

#include "ui/access/approvalsheet.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

VoidSaleSheet::VoidSaleSheet(Ref<Sale> sale, AppEnvironment& environment, SessionStore& session,
                             std::function<void()> onDone, QWidget* parent)
    : Sheet(QStringLiteral("Void Sale"), parent)
    , m_environment(environment)
    , m_model(std::move(sale), environment, session,
              [this, onDone = std::move(onDone)] {
                  if (onDone)
                      onDone();
                  accept();
              })
    , m_reason(new QLineEdit(this))
{
    setTitle(m_model.title());
    setMinimumWidth(480);
    m_reason->setPlaceholderText(VoidSaleSheetModel::reasonHint());
    m_reason->setAccessibleName(QStringLiteral("Reason"));
    form()->addWidget(m_reason);
    for (const QString& note : m_model.notes()) {
        auto* line = Theme::label(QStringLiteral("•  ") + note, Theme::Text::note, this);
        line->setTextFormat(Qt::PlainText);
        form()->addWidget(line);
    }

    primaryButton()->setEnabled(false);
    connect(m_reason, &QLineEdit::textEdited, &m_model, &VoidSaleSheetModel::setReason);
    connect(&m_model, &ViewModel::fieldsChanged, this,
            [this] { primaryButton()->setEnabled(m_model.canVoid()); });
    connect(&m_model, &ViewModel::errorMessageChanged, this, [this] { showError(m_model.errorMessage()); });
    m_reason->setFocus();
}

void VoidSaleSheet::primaryAction()
{
    if (!m_model.canVoid())
        return;
    if (!m_model.needsApproval()) {
        m_model.performVoid(nullptr);
        return;
    }
    // A failure after the PIN shows in the approval sheet, which stays open for the admin.
    ApprovalSheet::askPIN(
        AuditAction::voidSale, m_model.approvalSummary(), m_model,
        [this](const Ref<User>& approver) { return m_model.performVoid(approver); }, m_environment, this);
}

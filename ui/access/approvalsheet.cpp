#include "ui/access/approvalsheet.h"

#include "environment/appenvironment.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

ApprovalSheet::ApprovalSheet(ApprovalRequest request, AppEnvironment& environment, QWidget* parent)
    : Sheet(request.needsPIN ? QStringLiteral("Approve") : QStringLiteral("Continue"), parent)
    , m_model(std::move(request), environment.approvalService(), environment.attemptThrottle())
{
    setTitle(m_model.title());
    setMinimumWidth(440);
    auto* summary = new QLabel(m_model.request().summary, this);
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    form()->addWidget(summary);

    if (m_model.request().needsPIN) {
        form()->addWidget(Theme::label(ApprovalSheetModel::pinNote(), Theme::Text::note, this));
        m_pin = new QLineEdit(this);
        m_pin->setEchoMode(QLineEdit::Password);
        m_pin->setInputMethodHints(Qt::ImhDigitsOnly | Qt::ImhSensitiveData);
        m_pin->setMaxLength(12);
        addLabelledField(form(), QStringLiteral("Admin PIN"), m_pin);
        connect(m_pin, &QLineEdit::textEdited, &m_model, &ApprovalSheetModel::setPin);
        connect(&m_model, &ApprovalSheetModel::pinChanged, m_pin, [this] { m_pin->setText(m_model.pin()); });
    }
    if (m_model.request().askReason) {
        m_reason = new QLineEdit(this);
        addLabelledField(form(), m_model.reasonLabel(), m_reason);
        connect(m_reason, &QLineEdit::textEdited, &m_model, &ApprovalSheetModel::setReason);
    }
    connect(&m_model, &ViewModel::errorMessageChanged, this, [this] { showError(m_model.errorMessage()); });
    // The admin types at once: the PIN first, else the reason.
    if (QLineEdit* first = m_pin ? m_pin : m_reason)
        first->setFocus();
}

ApprovalSheet* ApprovalSheet::raise(ApprovalRequest request, AppEnvironment& environment, QWidget* parent)
{
    auto* sheet = new ApprovalSheet(std::move(request), environment, parent);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
    return sheet;
}

ApprovalSheet* ApprovalSheet::raiseInPlaceOf(ApprovalRequest request, AppEnvironment& environment,
                                             QWidget& waiting)
{
    request.onCancel = [&waiting] { waiting.show(); };
    waiting.hide();
    return raise(std::move(request), environment, waiting.parentWidget());
}

ApprovalSheet* ApprovalSheet::askPIN(AuditAction action, const QString& summary, const ViewModel& model,
                                     std::function<bool(const Ref<User>&)> perform,
                                     AppEnvironment& environment, QWidget* parent)
{
    return raise(ApprovalRequest::forModel(action, summary, model,
                                           [perform = std::move(perform)](const Ref<User>& approver, const QString&) {
                                               return perform(approver);
                                           }),
                 environment, parent);
}

void ApprovalSheet::primaryAction()
{
    if (m_model.approve()) {
        accept();
        return;
    }
    if (m_pin)
        m_pin->setFocus();
}

void ApprovalSheet::reject()
{
    m_model.cancel();
    Sheet::reject();
}

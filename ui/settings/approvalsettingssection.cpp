#include "ui/settings/approvalsettingssection.h"

#include "access/approvalsettingsmodel.h"
#include "ui/controls/errorlabel.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// The unit picker's items, in the order they are shown.
constexpr int percentItem = 0;
constexpr int amountItem = 1;
} // namespace

ApprovalSettingsSection::ApprovalSettingsSection(ApprovalSettingsModel& model, QWidget* parent)
    : SettingsSection(ApprovalSettingsModel::heading(), parent)
    , m_model(model)
{
    using Model = ApprovalSettingsModel;
    QVBoxLayout* card = addCard();
    m_warning = Theme::label(Model::noAdminPinWarning(), Theme::Text::note, this);
    Theme::setKind(m_warning, "warning");
    m_warning->setWordWrap(true);
    card->addWidget(m_warning);
    m_error = new ErrorLabel(this);
    card->addWidget(m_error);

    QGridLayout* form = addForm(card);
    for (const Model::Switch& entry : Model::switches) {
        auto* box = new QCheckBox(QString::fromUtf16(entry.title), this);
        addRow(form, QString(), box);
        m_switches.append(box);
        connect(box, &QCheckBox::toggled, &m_model,
                [this, action = entry.action](bool on) { m_model.setOn(action, on); });
    }
    addRow(form, Model::discountLimitTitle(), discountLimitRow());
    m_limitError = new ErrorLabel(this);
    // Its line stays while the limit reads, so the form below doesn't jump as the error comes and goes.
    QSizePolicy keepRoom = m_limitError->sizePolicy();
    keepRoom.setRetainSizeWhenHidden(true);
    m_limitError->setSizePolicy(keepRoom);
    m_limitError->setMinimumHeight(m_limitError->fontMetrics().height());
    form->addWidget(m_limitError, form->rowCount(), 1);

    auto* note = Theme::label(Model::note(), Theme::Text::note, this);
    note->setTextFormat(Qt::MarkdownText);
    addNote(form, note);

    auto* open = new QPushButton(Model::openAuditLogTitle(), this);
    auto* openRow = new QHBoxLayout;
    openRow->addWidget(open);
    openRow->addStretch();
    form->addLayout(openRow, form->rowCount(), 1);
    connect(open, &QPushButton::clicked, this, &ApprovalSettingsSection::openAuditLog);

    connect(&m_model, &Model::changed, this, &ApprovalSettingsSection::refresh);
    connect(&m_model, &ViewModel::errorMessageChanged, this, [this] { m_error->setMessage(m_model.errorMessage()); });
    refresh();
}

QWidget* ApprovalSettingsSection::discountLimitRow()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    m_limit = new QLineEdit(row);
    m_limit->setAccessibleName(ApprovalSettingsModel::discountLimitTitle());
    m_limit->setAlignment(Qt::AlignRight);
    m_limit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    m_limit->setFixedWidth(120);
    layout->addWidget(m_limit);
    m_limitUnit = new QComboBox(row);
    m_limitUnit->setAccessibleName(QStringLiteral("Discount Limit Unit"));
    m_limitUnit->addItems({ApprovalSettingsModel::percentUnit(), m_model.amountUnit()});
    layout->addWidget(m_limitUnit);
    layout->addStretch();
    saveWhenEdited(m_limit, [this](const QString& text) { m_model.setDiscountLimitText(text); });
    connect(m_limitUnit, &QComboBox::activated, this,
            [this](int index) { m_model.setDiscountLimitIsPercent(index == percentItem); });
    return row;
}

void ApprovalSettingsSection::refresh()
{
    m_warning->setVisible(m_model.nobodyCanApprove());
    for (qsizetype index = 0; index < m_switches.size(); ++index) {
        const QSignalBlocker block(m_switches[index]);
        m_switches[index]->setChecked(m_model.isOn(ApprovalSettingsModel::switches[size_t(index)].action));
    }
    if (!m_limit->hasFocus() && m_limit->text() != m_model.discountLimitText())
        m_limit->setText(m_model.discountLimitText());
    m_limitUnit->setItemText(amountItem, m_model.amountUnit());
    m_limitUnit->setCurrentIndex(m_model.settings().discountLimitIsPercent() ? percentItem : amountItem);
    m_limitError->setMessage(m_model.discountLimitProblem());
    // The limit only matters while discounts ask.
    const bool discountsAsk = m_model.isOn(AuditAction::discount);
    m_limit->setEnabled(discountsAsk);
    m_limitUnit->setEnabled(discountsAsk);
}

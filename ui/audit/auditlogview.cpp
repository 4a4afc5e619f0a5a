#include "ui/audit/auditlogview.h"

#include "environment/appenvironment.h"
#include "startup/marketregistry.h"
#include "startup/sessionstore.h"
#include "ui/audit/auditlogtablemodel.h"
#include "ui/controls/formfields.h"
#include "ui/style/theme.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableView>
#include <QVBoxLayout>

namespace {

QDateEdit* dateField(const QDate& date, QWidget* parent)
{
    auto* field = new QDateEdit(date, parent);
    field->setCalendarPopup(true);
    field->setDisplayFormat(QStringLiteral("MMM d, yyyy"));
    return field;
}

} // namespace

AuditLogView::AuditLogView(AppEnvironment& environment, SessionStore& session, MarketRegistry& registry,
                           QWidget* parent)
    : QWidget(parent)
    , m_session(session)
    , m_registry(registry)
    , m_model(environment.modelContext(), environment.approvalService())
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->setSpacing(12);

    auto* top = new QHBoxLayout;
    top->addWidget(Theme::label(AuditLogViewModel::title(), Theme::Text::title, this));
    top->addStretch();
    auto* exportCSV = new QPushButton(QStringLiteral("Export CSV"), this);
    auto* exportPDF = new QPushButton(QStringLiteral("Export PDF"), this);
    top->addWidget(exportCSV);
    top->addWidget(exportPDF);
    layout->addLayout(top);
    layout->addWidget(Theme::label(AuditLogViewModel::note(), Theme::Text::note, this));
    layout->addWidget(filterBar());

    // The search has a line of its own, long enough for its prompt, with the count beside it.
    auto* searchRow = new QHBoxLayout;
    QLineEdit* search = makeSearchField(AuditLogViewModel::searchPrompt(), this);
    search->setMaximumWidth(420);
    connect(search, &QLineEdit::textChanged, &m_model, &AuditLogViewModel::setSearch);
    searchRow->addWidget(search, 1);
    m_count = Theme::label(QString(), Theme::Text::note, this);
    searchRow->addWidget(m_count);
    searchRow->addStretch();
    layout->addLayout(searchRow);
    m_rows = new AuditLogTableModel(m_model, this);
    m_table = new QTableView(this);
    m_table->setModel(m_rows);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->setTextElideMode(Qt::ElideRight);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    for (const auto& [column, width] : {std::pair{0, 140}, {1, 190}, {2, 120}, {3, 120}, {4, 90}, {5, 200}, {6, 170}})
        m_table->setColumnWidth(column, width);
    layout->addWidget(m_table, 1);

    connect(exportCSV, &QPushButton::clicked, this,
            [this] { exportAs(QStringLiteral("csv"), QStringLiteral("CSV files (*.csv)")); });
    connect(exportPDF, &QPushButton::clicked, this,
            [this] { exportAs(QStringLiteral("pdf"), QStringLiteral("PDF files (*.pdf)")); });
    connect(&m_model, &AuditLogViewModel::rowsChanged, this, &AuditLogView::refresh);
    refresh();
}

QWidget* AuditLogView::filterBar()
{
    auto* bar = new QWidget(this);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);

    auto* action = new QComboBox(bar);
    action->setAccessibleName(QStringLiteral("Action"));
    action->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    action->addItem(AuditLogViewModel::allActions());
    for (AuditAction each : AuditActions::all)
        action->addItem(AuditActions::title(each));
    connect(action, &QComboBox::currentIndexChanged, &m_model, [this](int index) {
        m_model.setAction(index <= 0 ? std::nullopt : std::optional(AuditActions::all.at(size_t(index - 1))));
    });
    row->addWidget(new QLabel(QStringLiteral("Action"), bar));
    row->addWidget(action);

    auto* from = dateField(m_model.filter().from, bar);
    auto* to = dateField(m_model.filter().to, bar);
    connect(from, &QDateEdit::dateChanged, &m_model, &AuditLogViewModel::setFrom);
    connect(to, &QDateEdit::dateChanged, &m_model, &AuditLogViewModel::setTo);
    for (const auto& [label, field] : {std::pair{QStringLiteral("From"), from}, {QStringLiteral("To"), to}}) {
        auto* caption = new QLabel(label, bar);
        caption->setBuddy(field);
        field->setAccessibleName(label);
        row->addWidget(caption);
        row->addWidget(field);
    }

    row->addStretch();
    return bar;
}

void AuditLogView::refresh()
{
    m_count->setText(m_model.countText());
    // From the newest row again: a filter or the log changed.
    m_rows->restart();
}

void AuditLogView::exportAs(const QString& suffix, const QString& filter)
{
    const QString proposed = QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
                                 .filePath(m_model.documentTitle() + QLatin1Char('.') + suffix);
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Export"), proposed, filter);
    if (path.isEmpty())
        return;
    const std::optional<MarketInfo> market = m_registry.activeMarket();
    const std::optional<QString> storeName = market ? std::optional(market->name) : std::nullopt;
    const AppSettings* settings = m_session.settings().get();
    const bool written = suffix == QLatin1String("csv") ? m_model.exportCSV(path, storeName, settings)
                                                         : m_model.exportPDF(path, storeName, settings);
    if (!written)
        QMessageBox::warning(this, m_model.documentTitle(), m_model.errorMessage().value_or(QString()));
}

#include "ui/inventory/inventoryview.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "startup/sessionstore.h"
#include "ui/controls/errorlabel.h"
#include "ui/inventory/emptystate.h"
#include "ui/inventory/productinventorydetail.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QShowEvent>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace {
enum Column { nameColumn, skuColumn, onHandColumn };
const QColor lowStockColour(0xc6, 0x28, 0x28);

// A summary figure with its caption, on a card.
QLabel* makeFigure(const QString& caption, QHBoxLayout* row, QWidget* parent)
{
    auto* card = new QWidget(parent);
    Theme::markCard(card);
    auto* value = Theme::label(QString(), Theme::Text::heading, card);
    value->setAccessibleName(caption);
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(16, 10, 16, 10);
    layout->setSpacing(2);
    layout->addWidget(Theme::label(caption, Theme::Text::note, card));
    layout->addWidget(value);
    card->setMinimumWidth(180);
    row->addWidget(card);
    return value;
}

QList<QStandardItem*> makeRow(const Product& product)
{
    auto* name = new QStandardItem(product.name());
    auto* sku = new QStandardItem(product.sku());
    auto* onHand = new QStandardItem(Quantity::format(product.stockQuantity(), product.sellingUnit()));
    onHand->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (product.isLowStock()) {
        onHand->setForeground(lowStockColour);
        QFont font = onHand->font();
        font.setWeight(QFont::DemiBold);
        onHand->setFont(font);
        const QString note = QStringLiteral("Low stock: at or below the reorder level of %1.")
                                 .arg(Quantity::format(product.reorderLevel(), product.sellingUnit()));
        onHand->setToolTip(note);
        onHand->setAccessibleDescription(note);
    }
    QList<QStandardItem*> row{name, sku, onHand};
    for (QStandardItem* item : row)
        item->setEditable(false);
    return row;
}
} // namespace

InventoryView::InventoryView(ModelContext& context, InventoryServicing& inventory, SessionStore& session,
                             QWidget* parent)
    : QWidget(parent)
    , m_model(context)
    , m_session(session)
{
    auto* figures = new QHBoxLayout;
    figures->setSpacing(12);
    m_stockValue = makeFigure(QStringLiteral("Stock Value"), figures, this);
    m_lowStock = makeFigure(QStringLiteral("Low Stock"), figures, this);
    figures->addStretch();
    auto* error = new ErrorLabel(this);

    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(QStringLiteral("Search products"));
    m_search->setAccessibleName(QStringLiteral("Search products"));
    m_search->setClearButtonEnabled(true);

    m_rows = new QStandardItemModel(0, 3, this);
    m_rows->setHorizontalHeaderLabels(
        {QStringLiteral("Product"), QStringLiteral("SKU"), QStringLiteral("On Hand")});
    m_rows->horizontalHeaderItem(onHandColumn)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_list = new QTableView(this);
    Theme::markCard(m_list);
    m_list->setObjectName(QStringLiteral("products"));
    m_list->setAccessibleName(QStringLiteral("Products"));
    m_list->setModel(m_rows);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setShowGrid(false);
    m_list->setWordWrap(false);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->verticalHeader()->hide();
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_list->verticalHeader()->setDefaultSectionSize(34);
    m_list->horizontalHeader()->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
    m_list->horizontalHeader()->setSectionResizeMode(skuColumn, QHeaderView::Interactive);
    m_list->horizontalHeader()->setSectionResizeMode(onHandColumn, QHeaderView::ResizeToContents);
    m_list->horizontalHeader()->resizeSection(skuColumn, 96);
    m_list->horizontalHeader()->setHighlightSections(false);
    m_list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_noMatches = Theme::label(QString(), Theme::Text::note, this);
    m_noMatches->setTextFormat(Qt::PlainText);
    m_noMatches->hide();

    auto* listPane = new QWidget(this);
    listPane->setFixedWidth(400);
    auto* listColumn = new QVBoxLayout(listPane);
    listColumn->setContentsMargins(0, 0, 0, 0);
    listColumn->setSpacing(10);
    listColumn->addWidget(m_search);
    listColumn->addWidget(m_noMatches);
    listColumn->addWidget(m_list, 1);

    m_detail = new ProductInventoryDetail(m_model, context, inventory, session, this);
    m_selectPrompt =
        makeEmptyState(QStringLiteral("Select a product"),
                       QStringLiteral("Pick a product to see its stock history and make adjustments."), this);
    m_detailPages = new QStackedWidget(this);
    m_detailPages->addWidget(m_selectPrompt);
    m_detailPages->addWidget(m_detail);

    m_split = new QWidget(this);
    auto* split = new QHBoxLayout(m_split);
    split->setContentsMargins(0, 0, 0, 0);
    split->setSpacing(28);
    split->addWidget(listPane);
    split->addWidget(m_detailPages, 1);
    m_noItems =
        makeEmptyState(QStringLiteral("No stock-tracked items"),
                       QStringLiteral("Only Inventory Items have stock to count. Non-inventory items and "
                                      "services are sold without stock — manage them in Products."),
                       this);
    m_body = new QStackedWidget(this);
    m_body->addWidget(m_split);
    m_body->addWidget(m_noItems);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->setSpacing(16);
    layout->addWidget(Theme::label(QStringLiteral("Inventory"), Theme::Text::title, this));
    layout->addLayout(figures);
    layout->addWidget(error);
    layout->addWidget(m_body, 1);

    connect(m_search, &QLineEdit::textChanged, &m_model, &InventoryViewModel::setSearchText);
    connect(&m_model, &InventoryViewModel::searchTextChanged, this, [this] {
        refreshList();
        showSelection();
    });
    connect(&m_model, &InventoryViewModel::errorMessageChanged, error,
            [this, error] { error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &InventoryViewModel::inventoryChanged, this, [this] {
        if (isVisible())
            refresh();
        else
            m_isStale = true;
    });
    connect(&m_session, &SessionStore::settingsChanged, this, [this] {
        refreshSummary();
        m_detail->refresh();
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (m_rebuilding)
                    return;
                m_selectedID = current.isValid() ? m_products[current.row()]->id() : QUuid();
                showSelection();
            });
    refresh();
}

void InventoryView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        refresh();
}

void InventoryView::refresh()
{
    m_isStale = false;
    refreshSummary();
    refreshList();
    showSelection();
}

QString InventoryView::currencySymbol() const
{
    const Ref<AppSettings> settings = m_session.settings();
    return settings ? settings->currencySymbol() : Currency::fixedSign;
}

void InventoryView::refreshSummary()
{
    m_stockValue->setText(m_model.stockValueText(currencySymbol()));
    m_lowStock->setText(QString::number(m_model.lowStockCount()));
}

void InventoryView::refreshList()
{
    m_products = m_model.products();
    // Rebuilt rather than patched: one pass over a few thousand rows, and only when something
    // changed. The chosen product is chosen again by id.
    const QUuid selected = m_selectedID;
    // The rows going and the choice being restored are not the person's doing.
    m_rebuilding = true;
    m_rows->removeRows(0, m_rows->rowCount());
    int selectedRow = -1;
    for (int row = 0; row < m_products.size(); ++row) {
        m_rows->appendRow(makeRow(*m_products[row]));
        if (m_products[row]->id() == selected)
            selectedRow = row;
    }
    m_selectedID = selectedRow < 0 ? QUuid() : selected;
    if (selectedRow >= 0)
        m_list->selectionModel()->setCurrentIndex(m_rows->index(selectedRow, nameColumn),
                                                  QItemSelectionModel::ClearAndSelect |
                                                      QItemSelectionModel::Rows);
    m_rebuilding = false;

    const bool searching = !m_model.searchText().isEmpty();
    m_body->setCurrentWidget(m_products.isEmpty() && !searching ? m_noItems : m_split);
    m_noMatches->setText(QStringLiteral("No products match “%1”.").arg(m_model.searchText()));
    m_noMatches->setVisible(m_products.isEmpty() && searching);
    m_list->setVisible(!m_noMatches->isVisibleTo(this));
}

void InventoryView::showSelection()
{
    Ref<Product> product;
    for (const Ref<Product>& listed : std::as_const(m_products)) {
        if (listed->id() == m_selectedID)
            product = listed;
    }
    if (!product) {
        m_detailPages->setCurrentWidget(m_selectPrompt);
        m_detail->setProduct(nullptr);
        return;
    }
    if (m_detail->product() == product)
        m_detail->refresh();
    else
        m_detail->setProduct(product);
    m_detailPages->setCurrentWidget(m_detail);
}

bool InventoryView::selectProduct(const QUuid& productID)
{
    for (int row = 0; row < m_products.size(); ++row) {
        if (m_products[row]->id() == productID) {
            m_list->selectionModel()->setCurrentIndex(m_rows->index(row, nameColumn),
                                                      QItemSelectionModel::ClearAndSelect |
                                                          QItemSelectionModel::Rows);
            return true;
        }
    }
    return false;
}

bool InventoryView::isShowingNoItems() const
{
    return m_body->currentWidget() == m_noItems;
}

bool InventoryView::isShowingDetail() const
{
    return m_body->currentWidget() == m_split && m_detailPages->currentWidget() == m_detail;
}

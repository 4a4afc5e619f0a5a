#include "ui/inventory/productinventorydetail.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "startup/sessionstore.h"
#include "stock/stockadjustmentmodel.h"
#include "ui/controls/cards.h"
#include "ui/controls/emptystate.h"
#include "ui/inventory/movementhistorymodel.h"
#include "ui/inventory/stockadjustmentsheet.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace {
const QColor ink(0x1f, 0x23, 0x28);
const QColor muted(0x5f, 0x6b, 0x7a);
const QColor hairline(0xdd, 0xe1, 0xe6);
const QColor inward(0x2e, 0x7d, 0x32);
const QColor outward(0xc6, 0x28, 0x28);

// A history row: the type and the change on the first line, then when and why, then the cost.
class MovementRowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static constexpr int padding = 10;
    static constexpr int changeWidth = 150;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const int lines = index.data(MovementHistoryModel::costLineRole).isValid() ? 3 : 2;
        return {option.rect.width(), 2 * padding + lines * option.fontMetrics.height() + (lines - 1) * 3};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        const QRect area = option.rect.adjusted(padding + 4, padding, -padding - 4, -padding);
        const int line = option.fontMetrics.height() + 3;
        QFont strong = option.font;
        strong.setWeight(QFont::DemiBold);
        QFont small = option.font;
        small.setPixelSize(13);

        const QRect left(area.left(), area.top(), area.width() - changeWidth, line);
        const QRect right(area.right() - changeWidth, area.top(), changeWidth, line);
        const auto text = [&](const QRect& rect, const QFont& font, const QColor& colour, int role,
                              Qt::Alignment alignment) {
            painter->setFont(font);
            painter->setPen(colour);
            const QString value =
                QFontMetrics(font).elidedText(index.data(role).toString(), Qt::ElideRight, rect.width());
            painter->drawText(rect, int(alignment | Qt::AlignVCenter), value);
        };
        const int direction = index.data(MovementHistoryModel::directionRole).toInt();
        text(left, strong, ink, MovementHistoryModel::typeRole, Qt::AlignLeft);
        text(right, strong, direction > 0 ? inward : direction < 0 ? outward : muted, MovementHistoryModel::changeRole,
             Qt::AlignRight);
        // The stock after is short: the detail takes what it leaves, not a fixed share.
        const int stockAfterWidth =
            QFontMetrics(small).horizontalAdvance(index.data(MovementHistoryModel::stockAfterRole).toString());
        const QRect detail(area.left(), area.top() + line, area.width() - stockAfterWidth - 2 * padding, line);
        text(detail, small, muted, MovementHistoryModel::detailRole, Qt::AlignLeft);
        text(right.translated(0, line), small, muted, MovementHistoryModel::stockAfterRole, Qt::AlignRight);
        if (index.data(MovementHistoryModel::costLineRole).isValid())
            text(QRect(area.left(), area.top() + 2 * line, area.width(), line), small, muted,
                 MovementHistoryModel::costLineRole, Qt::AlignLeft);

        painter->setPen(hairline);
        painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
        painter->restore();
    }
};

} // namespace

ProductInventoryDetail::ProductInventoryDetail(InventoryViewModel& model, ModelContext& context,
                                               InventoryServicing& inventory, SessionStore& session,
                                               QWidget* parent)
    : QWidget(parent)
    , m_context(context)
    , m_inventory(inventory)
    , m_session(session)
    , m_history(new MovementHistoryModel(model, this))
{
    m_name = Theme::label(QString(), Theme::Text::title, this);
    m_name->setTextFormat(Qt::PlainText);
    m_name->setWordWrap(true);
    m_sku = Theme::label(QString(), Theme::Text::note, this);
    m_adjust = new QPushButton(QStringLiteral("Stock In / Out / Adjust…"), this);
    Theme::markPrimary(m_adjust);

    auto* figures = new QHBoxLayout;
    figures->setSpacing(12);
    m_onHand = addFigureCard(figures, QStringLiteral("On Hand"), this);
    m_reorderLevel = addFigureCard(figures, QStringLiteral("Reorder Level"), this);
    m_stockValue = addFigureCard(figures, QStringLiteral("Stock Value"), this);
    m_lowStock = new QLabel(QStringLiteral("Low Stock"), this);
    Theme::setKind(m_lowStock, "warningBadge");
    m_lowStock->setToolTip(QStringLiteral("On hand is at or below the reorder level."));
    m_averageCost = Theme::label(QString(), Theme::Text::note, this);
    m_averageCost->setObjectName(QStringLiteral("averageCost"));
    // Under their figures, inside the cards.
    static_cast<QVBoxLayout*>(m_onHand->parentWidget()->layout())->addWidget(m_lowStock, 0, Qt::AlignLeft);
    static_cast<QVBoxLayout*>(m_stockValue->parentWidget()->layout())->addWidget(m_averageCost);

    m_historyView = new QListView(this);
    m_historyView->setObjectName(QStringLiteral("movementHistory"));
    m_historyView->setAccessibleName(QStringLiteral("Movement History"));
    m_historyView->setModel(m_history);
    m_historyView->setItemDelegate(new MovementRowDelegate(m_historyView));
    m_historyView->setSelectionMode(QAbstractItemView::NoSelection);
    m_historyView->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_historyView->setUniformItemSizes(false);
    Theme::markCard(m_historyView);
    m_noMovements = makeEmptyState(QStringLiteral("No movements yet"),
                                   QStringLiteral("Stock changes for this product will show up here."), this);
    m_historyPages = new QStackedWidget(this);
    m_historyPages->addWidget(m_historyView);
    m_historyPages->addWidget(m_noMovements);

    auto* header = new QHBoxLayout;
    auto* names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(m_name);
    names->addWidget(m_sku);
    header->addLayout(names, 1);
    header->addWidget(m_adjust, 0, Qt::AlignTop);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(16);
    layout->addLayout(header);
    layout->addLayout(figures);
    layout->addSpacing(4);
    layout->addWidget(Theme::label(QStringLiteral("Movement History"), Theme::Text::heading, this));
    layout->addWidget(m_historyPages, 1);

    connect(m_adjust, &QPushButton::clicked, this, &ProductInventoryDetail::openAdjustmentSheet);
    connect(m_history, &QAbstractItemModel::modelReset, this, [this] {
        m_historyPages->setCurrentWidget(m_history->rowCount() > 0 ? static_cast<QWidget*>(m_historyView)
                                                                   : m_noMovements);
    });
}

void ProductInventoryDetail::setProduct(const Ref<Product>& product)
{
    m_product = product;
    if (m_sheet && (!product || m_sheet->model().product() != product))
        m_sheet->reject();
    refresh();
}

void ProductInventoryDetail::refresh()
{
    m_history->setProduct(m_product);
    if (!m_product)
        return;
    const Ref<AppSettings> settings = m_session.settings();
    const QString symbol = settings ? settings->currencySymbol() : Currency::fixedSign;
    const SellingUnit unit = m_product->sellingUnit();
    m_name->setText(m_product->name());
    m_sku->setText(m_product->sku().isEmpty() ? QString() : QStringLiteral("SKU %1").arg(m_product->sku()));
    m_sku->setVisible(!m_product->sku().isEmpty());
    m_onHand->setText(Quantity::format(m_product->stockQuantity(), unit));
    m_lowStock->setVisible(m_product->isLowStock());
    m_reorderLevel->setText(Quantity::format(m_product->reorderLevel(), unit));
    m_stockValue->setText(Currency::format(m_product->stockValue(), symbol));
    const QString perUnit = unit == SellingUnit::each
                                ? QStringLiteral("each")
                                : QStringLiteral("per %1").arg(SellingUnits::symbol(unit));
    m_averageCost->setText(
        QStringLiteral("at %1 %2").arg(Currency::format(m_product->costPrice(), symbol), perUnit));
}

bool ProductInventoryDetail::isShowingNoMovements() const
{
    return m_historyPages->currentWidget() == m_noMovements;
}

StockAdjustmentSheet* ProductInventoryDetail::adjustmentSheet() const
{
    return m_sheet;
}

void ProductInventoryDetail::openAdjustmentSheet()
{
    if (!m_product || m_sheet)
        return;
    m_sheet = new StockAdjustmentSheet(m_inventory, m_context, m_session, m_product, this);
    m_sheet->setAttribute(Qt::WA_DeleteOnClose);
    m_sheet->open();
}

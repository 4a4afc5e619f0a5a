#include "selling/heldsalesmodel.h"

#include "records/heldsaleitem.h"

#include <QLocale>

namespace {
const QString activeStatus = QStringLiteral("active");
}

HeldSalesModel::HeldSalesModel(ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
{
    context.onChange(this, {&HeldSale::schema(), &HeldSaleItem::schema()},
                     [this] { Q_EMIT heldSalesChanged(); });
}

QList<Ref<HeldSale>> HeldSalesModel::activeHeldSales()
{
    return reading(QList<Ref<HeldSale>>(), [this] {
        return m_context.fetch<HeldSale>(FetchDescriptor(HeldSale::Col::statusRaw == activeStatus)
                                             .sortedBy(ascending(HeldSale::Col::heldAt)));
    });
}

QString HeldSalesModel::itemsLine(const HeldSale& held)
{
    const QString when = QLocale(QLocale::English, QLocale::UnitedStates)
                             .toString(held.heldAt().toLocalTime(), QStringLiteral("MMM d, yyyy h:mm AP"));
    return QStringLiteral("%1 item(s) · %2").arg(held.items().size()).arg(when);
}

std::optional<Cart> HeldSalesModel::recall(const Ref<HeldSale>& held)
{
    Q_ASSERT(held);
    Cart cart;
    const bool recalled = saveOrUndo(m_context, [&] {
        cart = SalesService::recall(*held);
        held->setStatusRaw(QStringLiteral("recalled"));
    });
    return recalled ? std::optional<Cart>(cart) : std::nullopt;
}

bool HeldSalesModel::cancel(const Ref<HeldSale>& held)
{
    Q_ASSERT(held);
    return saveOrUndo(m_context, [&] { held->setStatusRaw(QStringLiteral("cancelled")); });
}

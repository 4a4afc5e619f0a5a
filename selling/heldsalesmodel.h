#pragma once

#include "records/heldsale.h"
#include "selling/cart.h"
#include "selling/salesservice.h"
#include "viewmodel/viewmodel.h"

#include <optional>

// The held-sales list of the workspace: the holds still active, oldest first, and the writes that
// take one off the list. Recalled and cancelled holds stay in the store with their status.
class HeldSalesModel : public ViewModel {
    Q_OBJECT

public:
    explicit HeldSalesModel(ModelContext& context, QObject* parent = nullptr);

    QList<Ref<HeldSale>> activeHeldSales();
    // "{n} item(s) · {date and time}"
    static QString itemsLine(const HeldSale& held);

    // The held cart, with the hold marked recalled in the same unit of work, so that it can't be
    // recalled twice; nothing when that couldn't be saved, with the reason in errorMessage.
    std::optional<Cart> recall(const Ref<HeldSale>& held);
    bool cancel(const Ref<HeldSale>& held);

Q_SIGNALS:
    // A save or rollback touched the holds: the list is out of date.
    void heldSalesChanged();

private:
    ModelContext& m_context;
};

#include "records/posschema.h"

#include "records/records.h"

const std::vector<const Entity*>& POSSchema::all()
{
    static const std::vector<const Entity*> entities = {
        &User::schema(),
        &Category::schema(),
        &Product::schema(),
        &Customer::schema(),
        &Sale::schema(),
        &SaleItem::schema(),
        &Payment::schema(),
        &InventoryMovement::schema(),
        &TillShift::schema(),
        &CashMovement::schema(),
        &HeldSale::schema(),
        &HeldSaleItem::schema(),
        &AppSettings::schema(),
        &Supplier::schema(),
        &CustomerPayment::schema(),
        &LoyaltyEntry::schema(),
        &Tax::schema(),
        &TaxGroup::schema(),
        &PurchaseOrder::schema(),
        &PurchaseOrderLine::schema(),
        &AuditEntry::schema(),
        &StaffMember::schema(),
        &Appointment::schema(),
    };
    return entities;
}

SchemaDescription POSSchema::description()
{
    using L = QStringList;
    return SchemaDescription{
        all(),
        {
            {"Sale", L{"timestamp"}},
            {"Sale", L{"invoiceNumber"}},
            {"Sale", L{"refundOfSaleID"}},
            {"Sale", L{"customer", "timestamp"}},
            {"Sale", L{"tillShift", "timestamp"}},
            {"Payment", L{"timestamp"}},
            {"Payment", L{"methodRaw", "timestamp"}},
            {"InventoryMovement", L{"product", "timestamp"}},
            {"InventoryMovement", L{"timestamp"}},
            {"TillShift", L{"statusRaw"}},
            {"TillShift", L{"openedAt"}},
            {"CashMovement", L{"timestamp"}},
            {"CustomerPayment", L{"customer", "timestamp"}},
            {"CustomerPayment", L{"timestamp"}},
            {"LoyaltyEntry", L{"customer", "timestamp"}},
            {"AuditEntry", L{"timestamp"}},
            {"HeldSale", L{"statusRaw", "heldAt"}},
            {"Appointment", L{"start"}},
            {"Product", L{"barcode"}},
            {"Product", L{"sku"}},
            {"Product", L{"name"}},
            {"Customer", L{"name"}},
            {"User", L{"username"}},
            {"PurchaseOrder", L{"number"}},
        },
        0x54414C59, // "TALY": marks the file as a store of this program
        1,
    };
}

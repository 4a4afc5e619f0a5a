#pragma once

#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_APP_SETTINGS_FIELDS(X, C) \
    X(C, Text, businessName, setBusinessName, "My Retail Store") \
    X(C, Text, addressLine, setAddressLine, "") \
    X(C, Text, phoneNumber, setPhoneNumber, "") \
    X(C, Text, currencyCode, setCurrencyCode, "GHS") \
    X(C, Text, currencySymbol, setCurrencySymbol, "₵") \
    X(C, Number, defaultTaxRate, setDefaultTaxRate, 0.15) \
    X(C, OptUuid, defaultTaxGroupID, setDefaultTaxGroupID, ) \
    X(C, Flag, taxInclusivePricing, setTaxInclusivePricing, false) \
    X(C, Text, receiptFooter, setReceiptFooter, "Thank you for your business!") \
    X(C, Text, receiptPrinterName, setReceiptPrinterName, "Default Thermal Printer (80mm)") \
    X(C, Text, receiptPrinterQueue, setReceiptPrinterQueue, "") \
    X(C, Flag, printReceiptAutomatically, setPrintReceiptAutomatically, false) \
    X(C, Flag, useThermalReceiptWidth, setUseThermalReceiptWidth, true) \
    X(C, OptBytes, logoPNG, setLogoPNG, ) \
    X(C, Flag, autoBackupOnTillClose, setAutoBackupOnTillClose, true) \
    X(C, Text, backupFolderPath, setBackupFolderPath, "") \
    X(C, OptDate, lastBackupAt, setLastBackupAt, ) \
    X(C, Integer, backupReminderDays, setBackupReminderDays, 3) \
    X(C, Flag, keepOnlyNewestBackups, setKeepOnlyNewestBackups, false) \
    X(C, Integer, keepBackupCount, setKeepBackupCount, 10) \
    X(C, Flag, cashDrawerEnabled, setCashDrawerEnabled, true) \
    X(C, Flag, cashDrawerOpenOnCashSale, setCashDrawerOpenOnCashSale, true) \
    X(C, Text, cashDrawerConnectionRaw, setCashDrawerConnectionRaw, "simulated") \
    X(C, Text, cashDrawerPinRaw, setCashDrawerPinRaw, "pin2") \
    X(C, Flag, allowNegativeStock, setAllowNegativeStock, false) \
    X(C, Number, lowStockDefaultThreshold, setLowStockDefaultThreshold, 5) \
    X(C, Text, defaultProductTypeRaw, setDefaultProductTypeRaw, "inventory") \
    X(C, Flag, loyaltyEnabled, setLoyaltyEnabled, true) \
    X(C, Number, loyaltySpendPerPoint, setLoyaltySpendPerPoint, 10) \
    X(C, Integer, loyaltyRedeemPoints, setLoyaltyRedeemPoints, 100) \
    X(C, Number, loyaltyRedeemValue, setLoyaltyRedeemValue, 5) \
    X(C, Integer, loyaltyMinimumRedeem, setLoyaltyMinimumRedeem, 100) \
    X(C, Flag, loyaltyRemindAtPayment, setLoyaltyRemindAtPayment, true) \
    X(C, Flag, loyaltyOpeningBalancesRecorded, setLoyaltyOpeningBalancesRecorded, false) \
    X(C, Text, countryCallingCode, setCountryCallingCode, "233") \
    X(C, Text, accountingAccountsJSON, setAccountingAccountsJSON, "") \
    X(C, Text, xeroTaxRate, setXeroTaxRate, "Tax Exempt") \
    X(C, Flag, appointmentsEnabled, setAppointmentsEnabled, true) \
    X(C, Flag, staffDefaultsApplied, setStaffDefaultsApplied, false) \
    X(C, Flag, approveDiscounts, setApproveDiscounts, true) \
    X(C, Flag, discountLimitIsPercent, setDiscountLimitIsPercent, true) \
    X(C, Number, discountLimit, setDiscountLimit, 10) \
    X(C, Flag, approvePriceChanges, setApprovePriceChanges, true) \
    X(C, Flag, approveRefunds, setApproveRefunds, false) \
    X(C, Flag, approveVoids, setApproveVoids, true) \
    X(C, Flag, approveRedeemPoints, setApproveRedeemPoints, false) \
    X(C, Flag, approveNoSale, setApproveNoSale, true) \
    X(C, Integer, lastReceiptSequence, setLastReceiptSequence, 0) \
    X(C, Flag, saleItemTaxModeBackfilled, setSaleItemTaxModeBackfilled, false)
// clang-format on

class AppSettings final : public Record {
    TALLY_RECORD(AppSettings, TALLY_APP_SETTINGS_FIELDS)

public:
    double loyaltyValuePerPoint() const;
    QString discountLimitText() const;
    bool hasLogo() const { return logoPNG().has_value() && !logoPNG()->isEmpty(); }
};

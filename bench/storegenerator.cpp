#include "storegenerator.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "money/taxcalculator.h"
#include "money/taxcomponent.h"
#include "records/posschema.h"
#include "store/modelcontainer.h"
#include "store/storeerror.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTimeZone>

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <numeric>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>

namespace {

constexpr double secondsPerDay = 86400.0;
constexpr int fullDays = 1826; // five years, one of them leap
constexpr int fullProducts = 2000;
constexpr int fullCustomers = 5000;
constexpr int fullShifts = 2000;
constexpr int fullSales = 500000;
// Prices move every quarter; Ghana's prices rose by well over half across these five years.
constexpr int daysPerPricePeriod = 91;
constexpr double firstPriceLevel = 0.6;
// One sale in a hundred comes back, in part or whole, within ten days; one in two hundred is voided
// at the till moments after it was rung up.
constexpr double returnedShare = 0.01;
constexpr int daysToReturn = 10;
constexpr double voidedShare = 0.005;
// The audit log of such a shop: haggled prices and discounts over the limit every day, a few No
// Sales a shift, and a row for each refund, void, redemption and pay-out; about 100,000 rows in five
// years.
constexpr double priceChangedShare = 0.12;
constexpr double discountOverLimitShare = 0.05;
constexpr int mostNoSalesPerShift = 9;

// Our own draws on top of the engine, so the rows don't depend on the standard library's
// distributions, which differ between implementations.
class Random {
public:
    explicit Random(std::uint64_t seed)
        : m_engine(seed)
    {
    }

    std::uint64_t bits() { return m_engine(); }
    double uniform() { return double(m_engine() >> 11) * 0x1.0p-53; }
    double uniform(double low, double high) { return low + (high - low) * uniform(); }
    std::int64_t between(std::int64_t low, std::int64_t high)
    {
        return low + std::int64_t(m_engine() % std::uint64_t(high - low + 1));
    }
    bool chance(double probability) { return uniform() < probability; }
    double normal()
    {
        const double u = std::max(uniform(), 1e-300);
        return std::sqrt(-2.0 * std::log(u)) * std::cos(2.0 * std::numbers::pi * uniform());
    }
    template <class T> const T& pick(const std::vector<T>& values)
    {
        return values[size_t(between(0, std::int64_t(values.size()) - 1))];
    }

private:
    std::mt19937_64 m_engine;
};

std::string uuid(Random& random)
{
    std::uint64_t high = random.bits();
    std::uint64_t low = random.bits();
    high = (high & ~std::uint64_t(0xF000)) | 0x4000; // version 4
    low = (low & 0x3FFFFFFFFFFFFFFFull) | 0x8000000000000000ull;
    char text[37];
    std::snprintf(text, sizeof text, "%08llX-%04llX-%04llX-%04llX-%012llX", (unsigned long long)(high >> 32),
                  (unsigned long long)((high >> 16) & 0xFFFF), (unsigned long long)(high & 0xFFFF),
                  (unsigned long long)(low >> 48), (unsigned long long)(low & 0xFFFFFFFFFFFFull));
    return text;
}

std::string digits(Random& random, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += char('0' + random.between(0, 9));
    return text;
}

std::string format(const char* pattern, auto... values)
{
    char text[256];
    std::snprintf(text, sizeof text, pattern, values...);
    return text;
}

double round3(double value)
{
    return Rounding::toThousandths(value);
}
double round4(double value)
{
    return Rounding::toPlaces(value, 4);
}

// Shelf prices end in 50 pesewas above GH₵5 and in 10 pesewas below.
double shelfPrice(double value)
{
    return Rounding::toCents(value >= 5 ? std::round(value * 2) / 2
                                        : std::max(0.1, std::round(value * 10) / 10));
}

// ---------------------------------------------------------------------------------------------
// What the shop sells

struct Size {
    const char* label;
    double factor;
    const char* unit;
};
struct Item {
    const char* name;
    double price; // of the first size, at the last day
};
struct Aisle {
    const char* name;
    const char* color;
    const char* skuPrefix;
    const char* productType;
    bool exempt;
    double popularity;
    const char* supplier;
    std::vector<Item> items;
    std::vector<Size> sizes;
};

const std::vector<Size> packs = {{"Single", 1, "each"},         {"Twin Pack", 1.95, "each"},
                                 {"Pack of 6", 5.7, "each"},    {"Pack of 12", 11.2, "each"},
                                 {"Carton (24)", 21.5, "each"}, {"Carton (48)", 42, "each"}};
const std::vector<Size> grades = {{"Small", 1, "each"},       {"Medium", 1.9, "each"},
                                  {"Large", 3.5, "each"},     {"Jumbo", 5, "each"},
                                  {"Family Pack", 8, "each"}, {"Value Pack", 11, "each"}};

// clang-format off
const std::vector<Aisle>& catalogue()
{
    static const std::vector<Aisle> categories = {
        {"Soft Drinks", "#E53935", "SDR", "inventory", false, 3, "Coca-Cola Bottling Co. of Ghana",
         {{"Coca-Cola", 7}, {"Fanta Orange", 7}, {"Fanta Pineapple", 7}, {"Sprite", 7}, {"Coke Zero", 7.5},
          {"Sprite Zero", 7.5}, {"Pepsi", 6.5}, {"Mirinda Orange", 6.5}, {"7Up", 6.5}, {"Malta Guinness", 9},
          {"Alvaro Pear", 9}, {"Vimto", 8}, {"Bigoo Cola", 4}, {"Rush Energy", 10}, {"Storm Energy", 9},
          {"Blue Jeans Cocktail", 8}, {"Kalyppo Fruit Drink", 2.5}, {"Tampico Citrus", 6},
          {"Chivita Orange Juice", 12}, {"Ceres Apple Juice", 18}, {"Verna Active", 4},
          {"Schweppes Bitter Lemon", 8}},
         {{"330ml Can", 1, "each"}, {"500ml", 1.15, "each"}, {"1L", 1.9, "each"}, {"1.5L", 2.6, "each"},
          {"Pack of 6 (330ml)", 5.6, "each"}, {"Pack of 12 (330ml)", 11, "each"}, {"Crate (24)", 21, "each"}}},
        {"Water", "#29B6F6", "WAT", "inventory", false, 2.4, "Voltic (GH) Ltd",
         {{"Voltic Mineral Water", 3}, {"Bel-Aqua", 2.5}, {"Verna Natural Water", 2.5}, {"Cway Water", 2.5},
          {"Everpure", 2}, {"Special Ice Water", 2}, {"Aquafina", 3}, {"Awake Water", 2.5}},
         {{"500ml", 1, "each"}, {"750ml", 1.3, "each"}, {"1.5L", 2, "each"}, {"5L", 5.5, "each"},
          {"Pack of 12 (500ml)", 10.5, "each"}, {"Sachet Bag (30)", 2.8, "each"},
          {"Pack of 6 (1.5L)", 11, "each"}}},
        {"Beer & Spirits", "#8D6E63", "ALC", "inventory", false, 1.6, "Accra Brewery PLC",
         {{"Club Lager", 12}, {"Star Lager", 11}, {"Guinness Foreign Extra", 14}, {"Gulder", 12},
          {"Stone Strong Lager", 10}, {"Smirnoff Ice", 13}, {"Origin Bitters", 10}, {"Alomo Bitters", 15},
          {"Kasapreko Dry Gin", 20}, {"Adonko Bitters", 12}, {"Orijin", 12}, {"Castle Milk Stout", 13},
          {"Hunter's Gold Cider", 14}, {"Beta Malt", 8}},
         {{"330ml", 1, "each"}, {"625ml", 1.7, "each"}, {"500ml Can", 1.4, "each"},
          {"Pack of 6 (330ml)", 5.7, "each"}, {"Crate (12)", 11, "each"}, {"Carton (24 cans)", 30, "each"}}},
        {"Dairy & Milk", "#FFF59D", "DAI", "inventory", false, 2, "Nestle Ghana Ltd",
         {{"Ideal Evaporated Milk", 6}, {"Peak Evaporated Milk", 7}, {"Carnation Milk", 6.5},
          {"Cowbell Milk Powder", 4}, {"Nido Full Cream", 8}, {"Peak Powdered Milk", 6},
          {"Dano Milk Powder", 5.5}, {"FanYogo", 3}, {"FanChoco", 3}, {"Hollandia Yoghurt", 12},
          {"Milo Ready-to-Drink", 8}},
         packs},
        {"Rice & Grains", "#D7CCC8", "RIC", "inventory", true, 2.2, "Olam Ghana Ltd",
         {{"Royal Aroma Perfumed Rice", 28}, {"Gino Parboiled Rice", 22}, {"Mama's Pride Rice", 24},
          {"Tilda Basmati Rice", 45}, {"Uncle Sam Rice", 23}, {"Jasmine Rice", 25}, {"Local Brown Rice", 18},
          {"Black-Eyed Beans", 20}, {"Maize (Corn)", 8}, {"Millet", 14}, {"White Gari", 10}, {"Yellow Gari", 12},
          {"Quaker Oats", 30}, {"Soya Beans", 15}},
         {{"1kg", 1, "each"}, {"2kg", 1.95, "each"}, {"5kg", 4.7, "each"}, {"10kg", 9.2, "each"},
          {"25kg Bag", 22, "each"}, {"(loose)", 0.9, "kg"}}},
        {"Flour, Sugar & Baking", "#FFE0B2", "FLR", "inventory", true, 1.4, "Olam Ghana Ltd",
         {{"Golden Penny Flour", 12}, {"Dangote Sugar", 14}, {"St Louis Cube Sugar", 25},
          {"Eagle Baking Powder", 6}, {"Maize Flour (Banku Mix)", 10}, {"Cassava Dough", 8},
          {"Saf-Instant Yeast", 8}, {"Corn Starch", 10}, {"Semolina", 15}, {"Icing Sugar", 18},
          {"Brown Sugar", 16}},
         {{"500g", 0.55, "each"}, {"1kg", 1, "each"}, {"2kg", 1.95, "each"}, {"5kg", 4.7, "each"},
          {"(loose)", 0.9, "kg"}}},
        {"Cooking Oil", "#FFCA28", "OIL", "inventory", false, 1.8, "Wilmar Africa Ltd",
         {{"Frytol Vegetable Oil", 35}, {"Gino Vegetable Oil", 33}, {"Golden Drop Oil", 30},
          {"Mamador Sunflower Oil", 42}, {"Zomi Palm Oil", 28}, {"Groundnut Oil", 38}, {"Coconut Oil", 45},
          {"Goya Olive Oil", 90}},
         {{"500ml", 0.55, "each"}, {"1L", 1, "each"}, {"2L", 1.95, "each"}, {"3L", 2.9, "each"},
          {"5L", 4.7, "each"}, {"(loose)", 0.9, "litre"}}},
        {"Canned Foods", "#FF7043", "CAN", "inventory", false, 1.6, "GB Foods Ghana",
         {{"Titus Sardines", 12}, {"Geisha Mackerel", 11}, {"Ena Pa Mackerel", 10}, {"Obaapa Sardines", 9},
          {"Princes Corned Beef", 28}, {"Exeter Corned Beef", 26}, {"Heinz Baked Beans", 15},
          {"Gino Baked Beans", 12}, {"Del Monte Sweet Corn", 16}, {"Green Giant Peas", 14}, {"Pride Tuna", 18},
          {"Nkulenu Palm Soup Base", 25}, {"Nkulenu Kontomire Stew", 28}, {"Pilchards in Tomato Sauce", 13},
          {"Luncheon Meat", 22}, {"Sweet Peas", 12}},
         packs},
        {"Noodles & Pasta", "#FFB74D", "NDL", "inventory", false, 1.9, "Tolaram Ghana",
         {{"Indomie Chicken", 3.5}, {"Indomie Onion Chicken", 3.5}, {"Indomie Pepper Chicken", 4},
          {"Cup Noodles", 6}, {"Yumyum Noodles", 3}, {"Golden Penny Spaghetti", 10}, {"Gino Spaghetti", 8},
          {"Pasta Zara Macaroni", 12}, {"Tasty Tom Noodles", 3}, {"Mimee Noodles", 3.2}},
         {{"Single", 1, "each"}, {"Pack of 5", 4.8, "each"}, {"Pack of 10", 9.4, "each"},
          {"Pack of 20", 18.5, "each"}, {"Carton (40)", 36, "each"}}},
        {"Spices & Seasoning", "#A1887F", "SPC", "inventory", false, 1.5, "GB Foods Ghana",
         {{"Maggi Cubes", 6}, {"Onga Seasoning", 5}, {"Royco Beef", 5}, {"Knorr Chicken", 5}, {"Ajinomoto", 4},
          {"Tropical Curry Powder", 6}, {"Dried Thyme", 5}, {"Ginger Powder", 6}, {"Ground Dried Pepper", 8},
          {"Homemade Shito", 20}, {"Iodised Salt", 3}, {"Garlic Paste", 12}, {"Nutmeg", 4}},
         grades},
        {"Tomato Paste & Sauces", "#C62828", "TOM", "inventory", false, 1.7, "GB Foods Ghana",
         {{"Gino Tomato Paste", 4}, {"Tasty Tom Paste", 4}, {"Pomo Tomato Paste", 3.5},
          {"Salsa Tomato Mix", 3.5}, {"Heinz Ketchup", 20}, {"Heinz Mayonnaise", 28}, {"Remia Mayonnaise", 25},
          {"Kikkoman Soy Sauce", 30}, {"Tropical Chilli Sauce", 15}},
         grades},
        {"Biscuits & Snacks", "#F4A261", "SNK", "inventory", false, 2.2, "Mars Distribution Ghana",
         {{"Cabin Biscuit", 5}, {"Bourbon Cream", 6}, {"Nice Biscuits", 4}, {"Danish Butter Cookies", 40},
          {"Pringles Original", 30}, {"Pringles Sour Cream", 30}, {"Plantain Chips", 5}, {"Nkatie Burger", 2},
          {"Chin Chin", 5}, {"Coconut Kube Cake", 3}, {"Popcorn", 3}, {"Peanut Brittle", 3},
          {"Tasty Crackers", 4}, {"Oreo", 10}, {"Digestive Biscuits", 14}, {"Cream Crackers", 12},
          {"Roasted Groundnuts", 4}, {"Coconut Chips", 5}, {"Banana Chips", 5}, {"Cashew Nuts", 15}},
         packs},
        {"Confectionery", "#6D4C41", "CON", "inventory", false, 1.3, "Cocoa Processing Company",
         {{"Golden Tree Kingsbite", 6}, {"Golden Tree Milk Chocolate", 8}, {"Golden Tree Royale Dark", 9},
          {"KitKat", 7}, {"Mars Bar", 8}, {"Snickers", 8}, {"Tom Tom Sweets", 1}, {"Trebor Mints", 3},
          {"Mentos", 3}, {"Orbit Chewing Gum", 3}, {"Chupa Chups Lollipop", 1.5}, {"Haribo Goldbears", 12},
          {"Eclairs Toffee", 5}},
         packs},
        {"Tea, Coffee & Cocoa", "#795548", "TEA", "inventory", false, 1.6, "Nestle Ghana Ltd",
         {{"Milo", 15}, {"Bournvita", 16}, {"Ovaltine", 16}, {"Nescafe Classic", 25},
          {"Lipton Yellow Label", 12}, {"Top Tea", 8}, {"Richoco", 10}, {"Golden Tree Drinking Chocolate", 14},
          {"Hot Cocoa", 12}, {"Lemon Ginger Tea", 10}, {"Twinings Green Tea", 25}, {"Cowbell Choco", 4},
          {"Kenya Tea", 11}, {"Chamomile Tea", 14}, {"Ricoffy Instant Coffee", 22}},
         {{"Sachet", 0.2, "each"}, {"200g", 1, "each"}, {"400g", 1.9, "each"}, {"500g Tin", 2.3, "each"},
          {"1kg Tin", 4.4, "each"}}},
        {"Fresh Produce", "#66BB6A", "FRP", "inventory", true, 2.6, "Makola Market Traders",
         {{"Tomatoes", 15}, {"Onions", 12}, {"Kpakpo Shito Pepper", 25}, {"Garden Eggs", 10}, {"Okra", 12},
          {"Cabbage", 8}, {"Carrots", 14}, {"Plantain", 8}, {"Pona Yam", 10}, {"Cassava", 5}, {"Cocoyam", 8},
          {"Sweet Potato", 9}, {"Oranges", 6}, {"Sugarloaf Pineapple", 10}, {"Pawpaw", 8}, {"Watermelon", 5},
          {"Bananas", 10}, {"Avocado", 12}, {"Fresh Ginger", 20}, {"Fresh Garlic", 30}, {"Kontomire", 8},
          {"Mango", 12}},
         {{"(per kg)", 1, "kg"}, {"Small Bowl", 1.2, "each"}, {"Large Bowl", 2.6, "each"}, {"Basket", 5, "each"}}},
        {"Meat & Fish", "#EF9A9A", "MEA", "inventory", true, 1.5, "Makola Market Traders",
         {{"Whole Chicken", 45}, {"Chicken Wings", 40}, {"Chicken Thighs", 42}, {"Boneless Beef", 70},
          {"Goat Meat", 80}, {"Gizzard", 35}, {"Fresh Tilapia", 55}, {"Red Fish", 50}, {"Frozen Salmon", 90},
          {"Smoked Herring", 40}, {"Smoked Mackerel (Kpanla)", 45}, {"Keta School Boys (Anchovies)", 60},
          {"Koobi (Salted Tilapia)", 65}, {"Crabs", 50}, {"Dried Shrimps", 90}, {"Pork", 60}},
         {{"(per kg)", 1, "kg"}, {"500g Pack", 0.55, "each"}, {"1kg Pack", 1.05, "each"}}},
        {"Frozen Foods", "#90CAF9", "FRZ", "inventory", false, 1.2, "Marine Cold Stores",
         {{"Chicken Drumsticks", 45}, {"Turkey Wings", 55}, {"Frozen Gizzards", 40}, {"Horse Mackerel", 35},
          {"Beef Sausages", 25}, {"Chicken Franks", 25}, {"Mixed Vegetables", 20}, {"Frozen Chips", 22},
          {"Vanilla Ice Cream", 15}, {"FanIce", 2.5}, {"Frozen Prawns", 80}, {"Fish Fingers", 30}},
         {{"Small Pack", 1, "each"}, {"Medium Pack", 1.9, "each"}, {"Family Pack", 3.6, "each"},
          {"Value Pack", 5.5, "each"}, {"Carton (10kg)", 14, "each"}}},
        {"Bakery", "#FFCC80", "BAK", "nonInventory", true, 2, "Adom Bakery",
         {{"Sugar Bread", 10}, {"Tea Bread", 8}, {"Butter Bread", 12}, {"Wheat Bread", 12}, {"Brown Bread", 11},
          {"Agege Bread", 10}, {"Meat Pie", 5}, {"Sausage Roll", 5}, {"Doughnuts", 3}, {"Rock Buns", 2},
          {"Spring Rolls", 4}, {"Coconut Bread", 12}},
         {{"Small", 0.6, "each"}, {"Medium", 1, "each"}, {"Large", 1.5, "each"}, {"Family Size", 2, "each"}}},
        {"Toiletries", "#CE93D8", "TOI", "inventory", false, 1.5, "Unilever Ghana PLC",
         {{"Pepsodent Toothpaste", 10}, {"Close-Up Toothpaste", 11}, {"Colgate Toothpaste", 12},
          {"Oral-B Toothbrush", 8}, {"Geisha Soap", 4}, {"Key Soap Bar", 5}, {"Lux Soap", 6}, {"Protex Soap", 7},
          {"Dettol Soap", 8}, {"Joy Lotion", 18}, {"Vaseline Petroleum Jelly", 15}, {"Nivea Lotion", 30},
          {"Natural Shea Butter", 20}, {"Always Pads", 18}, {"Gillette Blue II", 12}, {"Rexona Roll-On", 20},
          {"Pears Baby Soap", 7}, {"Softcare Tissue", 3}},
         packs},
        {"Laundry & Cleaning", "#4DD0E1", "LAU", "inventory", false, 1.4, "Unilever Ghana PLC",
         {{"Omo Detergent", 8}, {"Ariel Detergent", 10}, {"Klin Detergent", 6}, {"Sunlight Soap", 5},
          {"Key Laundry Bar", 6}, {"Viva Plus", 5}, {"So Klin", 6}, {"Jik Bleach", 10},
          {"Harpic Toilet Cleaner", 20}, {"Dettol Antiseptic", 25}, {"Mortein Insecticide", 30},
          {"Sunlight Dishwashing Liquid", 15}, {"Morning Fresh", 18}, {"Scouring Pads", 3}},
         {{"Small", 1, "each"}, {"500g", 2, "each"}, {"1kg", 3.8, "each"}, {"2kg", 7.4, "each"},
          {"5kg Bucket", 17, "each"}, {"10kg Sack", 32, "each"}}},
        {"Baby Care", "#F8BBD0", "BAB", "inventory", false, 0.9, "PZ Cussons Ghana",
         {{"Pampers Diapers", 80}, {"Huggies Diapers", 75}, {"Softcare Diapers", 55}, {"Molfix Diapers", 50},
          {"Nan Infant Formula", 120}, {"SMA Gold Formula", 130}, {"Cerelac Wheat", 35}, {"Cerelac Maize", 35},
          {"Johnson's Baby Oil", 25}, {"Johnson's Baby Powder", 20}, {"Huggies Baby Wipes", 20},
          {"Pears Baby Lotion", 22}},
         {{"Small", 1, "each"}, {"Medium", 1.6, "each"}, {"Large", 2.4, "each"}, {"Jumbo", 3.5, "each"},
          {"Value Pack", 5, "each"}}},
        {"Household", "#B0BEC5", "HOU", "inventory", false, 1, "Melcom Wholesale",
         {{"White Candles", 3}, {"Matches", 3}, {"Rambo Mosquito Coil", 8}, {"Tiger Head Batteries", 5},
          {"Energy Saver Bulb", 15}, {"Rubber Bucket", 25}, {"Plastic Bowl", 12}, {"Local Broom", 10},
          {"Mop Head", 20}, {"Padlock", 25}, {"Charcoal Bag", 60}, {"Gas Lighter", 8}, {"Foil Paper", 15},
          {"Cling Film", 15}, {"Rubbish Bags", 12}, {"Raid Insecticide Spray", 30},
          {"Air Wick Air Freshener", 25}, {"Tomato Tin Cup", 6}},
         packs},
        {"Stationery", "#9FA8DA", "STA", "inventory", false, 0.8, "Melcom Wholesale",
         {{"Exercise Book", 3}, {"Counter Book", 10}, {"Bic Biro Pen", 1.5}, {"HB Pencil", 1}, {"Eraser", 1},
          {"Ruler", 2}, {"Sharpener", 1}, {"A4 Paper (Ream)", 60}, {"Envelopes", 2}, {"Glue Stick", 4},
          {"Scissors", 8}, {"Stapler", 25}, {"Calculator", 30}, {"Permanent Marker", 6}, {"Highlighter", 5},
          {"Mathematical Set", 15}},
         {{"Single", 1, "each"}, {"Pack of 5", 4.8, "each"}, {"Pack of 10", 9.4, "each"},
          {"Box of 50", 45, "each"}, {"Box of 100", 88, "each"}}},
        {"Phone Accessories", "#78909C", "PHN", "inventory", false, 0.7, "Kikuu Ghana",
         {{"Micro USB Charger", 25}, {"Type-C Charger", 35}, {"USB Cable", 15}, {"Earphones", 20},
          {"Power Bank 10000mAh", 150}, {"Screen Protector", 15}, {"Phone Case", 30}, {"Memory Card 16GB", 45},
          {"Memory Card 32GB", 65}, {"Bluetooth Speaker", 120}, {"Car Charger", 30}, {"Tecno Phone Battery", 60},
          {"Itel Phone Battery", 45}},
         {{"Standard", 1, "each"}, {"Premium", 1.6, "each"}, {"Pack of 2", 1.9, "each"}}},
        {"Airtime & Data", "#FFEB3B", "AIR", "nonInventory", true, 2, "MTN Ghana",
         {{"MTN Airtime", 1}, {"Telecel Airtime", 1}, {"AirtelTigo Airtime", 1}, {"MTN Data Bundle", 1},
          {"Telecel Data Bundle", 1}, {"AirtelTigo Data Bundle", 1}},
         {{"GH₵1", 1, "each"}, {"GH₵2", 2, "each"}, {"GH₵5", 5, "each"}, {"GH₵10", 10, "each"},
          {"GH₵20", 20, "each"}, {"GH₵50", 50, "each"}}},
        {"Cosmetics & Hair", "#F06292", "COS", "inventory", false, 0.9, "PZ Cussons Ghana",
         {{"Dark & Lovely Relaxer", 45}, {"Blue Magic Hair Cream", 15}, {"X-pression Braids", 25},
          {"Darling Weave-On", 60}, {"Apple Hair Food", 12}, {"Nail Polish", 8}, {"Lipstick", 15},
          {"Tara Face Powder", 20}, {"Body Spray", 25}, {"Nivea Deodorant", 25}, {"Shaving Stick", 5},
          {"Comb", 3}, {"Hair Pins", 3}, {"Cotton Buds", 5}, {"Coconut Hair Oil", 15}},
         grades},
        {"Breakfast Cereals", "#BCAAA4", "CER", "inventory", false, 0.9, "Nestle Ghana Ltd",
         {{"Kellogg's Corn Flakes", 35}, {"Golden Morn", 30}, {"Tom Brown", 15}, {"Hausa Koko Mix", 10},
          {"Weetabix", 40}, {"Foster Clark's Custard", 15}, {"Millet Koko Mix", 8}, {"Cocoa Oats", 28}},
         {{"Small", 1, "each"}, {"Medium", 1.9, "each"}, {"Large", 3.6, "each"}, {"Family Pack", 5.5, "each"}}},
        {"Services", "#26A69A", "SRV", "service", false, 0.6, "",
         {{"Photocopy (Black & White)", 0.5}, {"Photocopy (Colour)", 2}, {"Printing (Black & White)", 1},
          {"Printing (Colour)", 3}, {"Lamination", 5}, {"Scanning", 2}, {"Phone Charging", 2},
          {"Home Delivery (Within 5km)", 15}, {"Home Delivery (Beyond 5km)", 30}, {"Gift Wrapping", 10},
          {"Passport Photos", 20}, {"Typing (per page)", 3}, {"Binding", 10}},
         {{"", 1, "each"}, {"Express", 1.5, "each"}}},
    };
    return categories;
}
// clang-format on

const std::vector<const char*> firstNames = {
    "Kwame",    "Kofi",    "Kwaku",   "Yaw",       "Kwabena", "Kojo",    "Kwesi", "Kwadwo",  "Ama",
    "Akosua",   "Abena",   "Akua",    "Yaa",       "Afua",    "Efua",    "Adwoa", "Esi",     "Akos",
    "Emmanuel", "Grace",   "Joseph",  "Comfort",   "Samuel",  "Mercy",   "Isaac", "Gifty",   "Daniel",
    "Patience", "Prince",  "Felicia", "Eric",      "Rita",    "Michael", "Vida",  "Richard", "Doris",
    "Ebenezer", "Linda",   "Francis", "Priscilla", "Nana",    "Selasi",  "Edem",  "Dzifa",   "Mawuli",
    "Elikem",   "Fuseini", "Abdul",   "Aisha",     "Mohammed"};
const std::vector<const char*> surnames = {
    "Mensah",   "Owusu",    "Boateng",    "Asante",  "Osei",    "Appiah",  "Agyeman", "Addo",   "Amoah",
    "Ofori",    "Darko",    "Nkrumah",    "Quaye",   "Tetteh",  "Annan",   "Adjei",   "Bonsu",  "Frimpong",
    "Sarpong",  "Antwi",    "Acheampong", "Danquah", "Ansah",   "Kyei",    "Oppong",  "Yeboah", "Badu",
    "Amponsah", "Gyamfi",   "Wiredu",     "Tagoe",   "Lamptey", "Quartey", "Nortey",  "Ankrah", "Aryee",
    "Mahama",   "Abubakar", "Issah",      "Agbeko",  "Dogbe",   "Kpodo",   "Asamoah", "Opoku",  "Sackey"};
const std::vector<const char*> areas = {
    "Madina, Accra",  "Adenta, Accra", "East Legon, Accra", "Dansoman, Accra",   "Kaneshie, Accra",
    "Spintex, Accra", "Osu, Accra",    "Achimota, Accra",   "Tema Community 25", "Kasoa",
    "Teshie, Accra",  "Dome, Accra",   "Lapaz, Accra",      "Nungua, Accra",     "Haatso, Accra"};
const std::vector<const char*> networkPrefixes = {"024", "054", "055", "059", "020",
                                                  "050", "027", "057", "026"};

// ---------------------------------------------------------------------------------------------
// Writing rows

class Database {
public:
    explicit Database(const QString& path)
    {
        if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
            const QString message =
                m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QStringLiteral("out of memory");
            sqlite3_close(m_db);
            throw StoreError(QStringLiteral("%1 could not be opened for writing: %2").arg(path, message));
        }
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { sqlite3_close(m_db); }

    sqlite3* handle() const { return m_db; }

    void execute(const std::string& sql)
    {
        char* error = nullptr;
        if (sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
            const QString message = QString::fromUtf8(error ? error : "unknown error");
            sqlite3_free(error);
            throw StoreError(
                QStringLiteral("\"%1\" failed: %2").arg(QString::fromStdString(sql).left(80), message));
        }
    }

    [[noreturn]] void fail(const std::string& what) const
    {
        throw StoreError(QStringLiteral("%1: %2").arg(QString::fromStdString(what),
                                                      QString::fromUtf8(sqlite3_errmsg(m_db))));
    }

private:
    sqlite3* m_db = nullptr;
};

// One prepared INSERT, bound column by column in the order given, then written by row().
class Insert {
public:
    Insert(Database& db, const char* table, std::initializer_list<const char*> columns)
        : m_db(db)
        , m_table(table)
        , m_columns(int(columns.size()))
    {
        std::string names;
        std::string marks;
        for (const char* column : columns) {
            names += (names.empty() ? "\"" : ", \"") + std::string(column) + "\"";
            marks += marks.empty() ? "?" : ", ?";
        }
        const std::string sql = "INSERT INTO \"" + m_table + "\" (" + names + ") VALUES (" + marks + ")";
        if (sqlite3_prepare_v2(db.handle(), sql.c_str(), -1, &m_statement, nullptr) != SQLITE_OK)
            db.fail("Preparing " + sql);
    }
    Insert(const Insert&) = delete;
    Insert& operator=(const Insert&) = delete;
    ~Insert() { sqlite3_finalize(m_statement); }

    Insert& text(std::string_view value)
    {
        check(sqlite3_bind_text64(m_statement, ++m_bound, value.data(), value.size(), SQLITE_TRANSIENT,
                                  SQLITE_UTF8));
        return *this;
    }
    Insert& real(double value)
    {
        check(sqlite3_bind_double(m_statement, ++m_bound, value));
        return *this;
    }
    Insert& integer(std::int64_t value)
    {
        check(sqlite3_bind_int64(m_statement, ++m_bound, value));
        return *this;
    }
    Insert& flag(bool value) { return integer(value ? 1 : 0); }
    Insert& null()
    {
        check(sqlite3_bind_null(m_statement, ++m_bound));
        return *this;
    }
    // Absent when empty, as the optional relationship and text columns store it.
    Insert& textOrNull(std::string_view value) { return value.empty() ? null() : text(value); }

    void row()
    {
        // A miscounted row would shift every later column; refuse it rather than write nonsense.
        if (m_bound != m_columns)
            throw StoreError(QStringLiteral("%1 bound %2 of %3 columns")
                                 .arg(QString::fromStdString(m_table))
                                 .arg(m_bound)
                                 .arg(m_columns));
        if (sqlite3_step(m_statement) != SQLITE_DONE)
            m_db.fail("Writing a row of " + m_table);
        sqlite3_reset(m_statement);
        m_bound = 0;
        ++m_rows;
    }

    const std::string& table() const { return m_table; }
    std::int64_t rows() const { return m_rows; }

private:
    void check(int rc)
    {
        if (rc != SQLITE_OK)
            m_db.fail("Binding column " + std::to_string(m_bound) + " of " + m_table);
    }

    Database& m_db;
    std::string m_table;
    int m_columns;
    int m_bound = 0;
    std::int64_t m_rows = 0;
    sqlite3_stmt* m_statement = nullptr;
};

// ---------------------------------------------------------------------------------------------
// The shop's history

struct ProductState {
    std::string id, sku, barcode, name, supplier, typeRaw, unitRaw;
    int category = 0;
    double finalPrice = 0;
    double costRatio = 0.75;
    bool taxable = true;
    bool tracksStock = true;
    double weight = 1;
    double reorderLevel = 5;
    double restockTo = 20;
    double caseSize = 1;
    int lastSellingDay = 0; // discontinued products stop selling after this day
    double createdAt = 0;
    double updatedAt = 0;
    double stock = 0;
    double cost = 0;
    bool restockDue = false;
};

struct CustomerState {
    std::string id, name, phone, email, address;
    double createdAt = 0;
    bool allowCredit = false;
    double creditLimit = 0;
    std::int64_t points = 0;
    double owed = 0;
};

struct ShiftState {
    std::string id;
    int cashier = 1;
    double openedAt = 0;
    double closedAt = 0;
    double openingFloat = 0;
    double cashIn = 0; // cash taken and paid in, less paid out
};

struct Repayment {
    int customer;
    double amount;
};

// A return is planned when its sale is rung up, so that the sale's row already carries what the
// return will make of it; it is written on its own day, in time order with that day's sales.
struct ReturnedLine {
    int product;
    double quantity; // above zero
    double unitPrice;
    double unitCost;
    double taxRate;
    double unitDiscount;
};

struct SoldLine {
    int product;
    double quantity;
    double unitPrice;
    double unitCost;
};

struct PlannedRefund {
    double when = 0;
    std::string originalId;
    std::string originalInvoice;
    int customer = -1;
    bool onAccount = false;
    std::vector<ReturnedLine> lines;
    std::int64_t pointsToGiveBack = 0;
    double pointsValue = 0;
    std::int64_t pointsToTakeBack = 0;
};

// What a Sale row holds, for sales and refunds alike.
struct SaleRow {
    std::string id, invoice;
    double when = 0;
    std::string status = "completed";
    double subtotal = 0, lineDiscountTotal = 0, saleDiscount = 0, taxTotal = 0, total = 0;
    std::int64_t pointsEarned = 0, pointsRedeemed = 0;
    double pointsDiscount = 0;
    std::optional<double> voidedAt;
    std::string voidReason, voidedByName;
    int cashier = 0;
    std::string customerId, shiftId;
    std::int64_t pointsReversed = 0, pointsReturned = 0;
    std::string refundOfSaleID, refundReason;
};

class HistoryWriter {
public:
    HistoryWriter(Database& db, const StoreGenerator::Options& options)
        : m_db(db)
        , m_options(options)
        , m_random(options.seed)
        // Returns draw from a stream of their own, so that they leave the rest of the history as it was.
        , m_refundRandom(options.seed ^ 0x7E7A17ull)
        // So do the audit rows.
        , m_auditRandom(options.seed ^ 0xA0D17ull)
        , m_days(std::max(1, int(std::lround(fullDays * options.scale))))
        , m_salesTotal(std::max<std::int64_t>(1, std::llround(fullSales * options.scale)))
        , m_firstDay(options.lastDay.addDays(-(m_days - 1)))
        , m_firstEpoch(double(QDateTime(m_firstDay, QTime(0, 0), QTimeZone::utc()).toSecsSinceEpoch()))
        , m_users(
              db, "User",
              {"id", "name", "username", "passwordHash", "passwordSalt", "roleRaw", "isActive", "createdAt"})
        , m_categories(db, "Category", {"id", "name", "colorHex", "sortOrder"})
        , m_suppliers(db, "Supplier",
                      {"id", "name", "phone", "email", "address", "notes", "isActive", "createdAt"})
        , m_taxes(db, "Tax", {"id", "name", "rate", "isCompound", "sortOrder", "createdAt"})
        , m_taxGroups(db, "TaxGroup", {"id", "name", "sortOrder", "createdAt"})
        , m_groupTaxes(db, "TaxGroup_taxes", {"TaxGroup", "Tax"})
        , m_products(db, "Product",
                     {"id", "sku", "barcode", "name", "costPrice", "sellingPrice", "taxRate", "isTaxable",
                      "taxGroup", "stockQuantity", "reorderLevel", "supplier", "isActive", "productTypeRaw",
                      "sellingUnitRaw", "askForStaff", "createdAt", "updatedAt", "category"})
        , m_customers(db, "Customer",
                      {"id", "name", "phone", "email", "address", "loyaltyPoints", "createdAt", "allowCredit",
                       "creditLimit"})
        , m_shifts(db, "TillShift",
                   {"id", "cashier", "openedAt", "closedAt", "openingFloat", "expectedCash", "countedCash",
                    "variance", "notes", "statusRaw"})
        , m_sales(db, "Sale",
                  {"id",
                   "invoiceNumber",
                   "timestamp",
                   "statusRaw",
                   "subtotal",
                   "lineDiscountTotal",
                   "saleDiscount",
                   "taxTotal",
                   "total",
                   "pointsEarned",
                   "pointsRedeemed",
                   "pointsDiscount",
                   "voidedAt",
                   "voidReason",
                   "voidedByName",
                   "cashier",
                   "customer",
                   "tillShift",
                   "pointsReversed",
                   "pointsReturned",
                   "refundOfSaleID",
                   "refundReason"})
        , m_items(db, "SaleItem",
                  {"id", "product", "productNameSnapshot", "skuSnapshot", "quantity", "unitPrice",
                   "unitCostSnapshot", "taxRateSnapshot", "lineDiscount", "pricesIncludeTax",
                   "productTypeRaw", "sellingUnitRaw", "taxComponentsRaw", "sale", "returnedQuantity"})
        , m_payments(db, "Payment",
                     {"id", "sale", "methodRaw", "amount", "tenderedAmount", "changeGiven", "reference",
                      "timestamp"})
        , m_movements(db, "InventoryMovement",
                      {"id", "product", "typeRaw", "quantityChange", "stockAfter", "reason", "supplier",
                       "relatedSale", "performedBy", "timestamp", "unitCost", "costBefore", "costAfter"})
        , m_cashMovements(db, "CashMovement",
                          {"id", "tillShift", "typeRaw", "amount", "reason", "performedBy", "timestamp"})
        , m_customerPayments(db, "CustomerPayment",
                             {"id", "customer", "amount", "methodRaw", "reference", "note", "receivedBy",
                              "tillShift", "timestamp"})
        , m_loyalty(db, "LoyaltyEntry",
                    {"id", "customer", "points", "balanceAfter", "kindRaw", "reference", "note", "value",
                     "user", "timestamp"})
        , m_settings(db, "AppSettings",
                     {"id", "businessName", "addressLine", "phoneNumber", "defaultTaxGroupID", "lastBackupAt",
                      "loyaltyOpeningBalancesRecorded", "staffDefaultsApplied", "lastReceiptSequence",
                      "saleItemTaxModeBackfilled"})
        , m_audit(db, "AuditEntry",
                  {"id", "timestamp", "actionRaw", "cashierName", "approverName", "amount", "reference", "reason",
                   "details"})
    {
    }

    void run()
    {
        m_db.execute("BEGIN");
        makeUsersAndTaxes();
        makeCatalogue();
        makeCustomers();
        planDays();
        for (int day = 0; day < m_days; ++day) {
            tradeDay(day);
            // Commits now and then keep the dirty pages bounded.
            if (day % 60 == 59) {
                m_db.execute("COMMIT");
                m_db.execute("BEGIN");
            }
        }
        writeProductsAndCustomers();
        writeSettings();
        m_db.execute("COMMIT");
    }

    std::vector<std::pair<QString, std::int64_t>> rowCounts() const
    {
        std::vector<std::pair<QString, std::int64_t>> counts;
        for (const Insert* insert :
             {&m_users, &m_categories, &m_suppliers, &m_taxes, &m_taxGroups, &m_groupTaxes, &m_products,
              &m_customers, &m_shifts, &m_sales, &m_items, &m_payments, &m_movements, &m_cashMovements,
              &m_customerPayments, &m_loyalty, &m_settings, &m_audit})
            counts.emplace_back(QString::fromStdString(insert->table()), insert->rows());
        return counts;
    }

private:
    double dayEpoch(int day) const { return m_firstEpoch + day * secondsPerDay; }
    double at(int day, double hours) const
    {
        // Millisecond timestamps, as the program records them.
        return std::round((dayEpoch(day) + hours * 3600.0) * 1000.0) / 1000.0;
    }
    int pricePeriods() const { return (m_days - 1) / daysPerPricePeriod; }
    double priceLevel(int day) const
    {
        const int periods = pricePeriods();
        if (periods == 0)
            return 1.0;
        const int period = std::min(day / daysPerPricePeriod, periods);
        return std::pow(firstPriceLevel, double(periods - period) / periods);
    }
    double priceOn(const ProductState& product, int day) const
    {
        // Airtime is sold at face value.
        if (m_catalogue[size_t(product.category)].skuPrefix == std::string_view("AIR"))
            return product.finalPrice;
        return shelfPrice(product.finalPrice * priceLevel(day));
    }
    double supplierCostOn(const ProductState& product, int day) const
    {
        return round4(priceOn(product, day) * product.costRatio);
    }

    void makeUsersAndTaxes()
    {
        const double setUp = m_firstEpoch - 30 * secondsPerDay + 9 * 3600;
        const struct {
            const char* name;
            const char* username;
            const char* role;
        } people[] = {{"Akosua Mensah", "akosua", "admin"},
                      {"Kofi Boateng", "kofi", "cashier"},
                      {"Ama Owusu", "ama", "cashier"}};
        for (const auto& person : people) {
            m_userIds.push_back(uuid(m_random));
            m_userNames.emplace_back(person.name);
            m_users.text(m_userIds.back())
                .text(person.name)
                .text(person.username)
                .text(hex(64))
                .text(hex(32))
                .text(person.role)
                .flag(true)
                .real(setUp)
                .row();
        }

        const struct {
            const char* name;
            double rate;
        } taxes[] = {{"NHIL", 0.025}, {"GETFund Levy", 0.025}, {"VAT", 0.15}};
        std::vector<TaxComponent> components;
        std::vector<std::string> taxIds;
        for (int i = 0; i < 3; ++i) {
            taxIds.push_back(uuid(m_random));
            m_taxes.text(taxIds.back())
                .text(taxes[i].name)
                .real(taxes[i].rate)
                .flag(false)
                .integer(i)
                .real(setUp)
                .row();
            components.push_back({QString::fromUtf8(taxes[i].name), taxes[i].rate});
        }
        m_taxGroupId = uuid(m_random);
        m_taxGroups.text(m_taxGroupId).text("Standard (VAT + NHIL + GETFund)").integer(0).real(setUp).row();
        for (const std::string& taxId : taxIds)
            m_groupTaxes.text(m_taxGroupId).text(taxId).row();
        m_taxedComponents = TaxComponent::encode(components).toStdString();
        m_exemptComponents = TaxComponent::encode({}).toStdString();
    }

    std::string hex(int count)
    {
        static const char symbols[] = "0123456789abcdef";
        std::string text;
        for (int i = 0; i < count; ++i)
            text += symbols[m_random.between(0, 15)];
        return text;
    }

    std::string barcode()
    {
        // EAN-13 under Ghana's GS1 prefix, with its check digit.
        for (;;) {
            std::string code = "603" + digits(m_random, 9);
            int sum = 0;
            for (int i = 0; i < 12; ++i)
                sum += (code[size_t(i)] - '0') * (i % 2 ? 3 : 1);
            code += char('0' + (10 - sum % 10) % 10);
            if (m_barcodes.insert(code).second)
                return code;
        }
    }

    void makeCatalogue()
    {
        const auto& categories = catalogue();
        m_catalogue = categories;
        const double created = m_firstEpoch - 14 * secondsPerDay;
        std::vector<std::string> supplierNames;
        for (size_t c = 0; c < categories.size(); ++c) {
            m_categoryIds.push_back(uuid(m_random));
            m_categories.text(m_categoryIds.back())
                .text(categories[c].name)
                .text(categories[c].color)
                .integer(std::int64_t(c))
                .row();
            const std::string supplier = categories[c].supplier;
            if (!supplier.empty() &&
                std::find(supplierNames.begin(), supplierNames.end(), supplier) == supplierNames.end())
                supplierNames.push_back(supplier);
        }
        for (const std::string& name : supplierNames) {
            std::string mail = name.substr(0, name.find(' '));
            std::transform(mail.begin(), mail.end(), mail.begin(),
                           [](unsigned char c) { return char(std::tolower(c)); });
            m_suppliers.text(uuid(m_random))
                .text(name)
                .text("030" + digits(m_random, 7))
                .text("orders@" + mail + ".com.gh")
                .text(m_random.pick(areas))
                .text("")
                .flag(true)
                .real(created)
                .row();
        }

        // Round robin over the categories, so that a small store still has every kind of goods.
        const int wanted =
            std::max(int(categories.size()) + 4, int(std::lround(fullProducts * m_options.scale)));
        std::vector<size_t> next(categories.size(), 0);
        std::vector<int> skuNumbers(categories.size(), 0);
        int round = 0;
        while (int(m_productStates.size()) < wanted) {
            bool added = false;
            for (size_t c = 0; c < categories.size() && int(m_productStates.size()) < wanted; ++c) {
                const Aisle& aisle = categories[c];
                const size_t combos = aisle.items.size() * aisle.sizes.size();
                if (next[c] >= combos && round == 0)
                    continue;
                // Sizes vary slowest: every item's first size comes before anyone's second.
                const size_t combo = next[c]++ % combos;
                const Item& item = aisle.items[combo % aisle.items.size()];
                const size_t sizeIndex = combo / aisle.items.size();
                const Size& size = aisle.sizes[sizeIndex];
                addProduct(int(c), item, size, sizeIndex, next[c] > combos, ++skuNumbers[c], created);
                added = true;
            }
            if (!added)
                round = 1; // every combination is used: carry on with imported variants
        }
        m_productWeightSum.reserve(m_productStates.size());
        double sum = 0;
        for (const ProductState& product : m_productStates)
            m_productWeightSum.push_back(sum += product.weight);
    }

    void addProduct(int category, const Item& item, const Size& size, size_t sizeIndex, bool imported,
                    int skuNumber, double created)
    {
        const Aisle& aisle = m_catalogue[size_t(category)];
        ProductState product;
        product.id = uuid(m_random);
        product.category = category;
        product.name = item.name;
        if (*size.label)
            product.name += std::string(" ") + size.label;
        if (imported)
            product.name += " (Imported)";
        product.sku = format("%s-%04d", aisle.skuPrefix, skuNumber);
        product.barcode = barcode();
        product.supplier = aisle.supplier;
        product.typeRaw = aisle.productType;
        product.unitRaw = size.unit;
        product.taxable = !aisle.exempt;
        product.tracksStock = product.typeRaw == "inventory";
        product.finalPrice = aisle.skuPrefix == std::string_view("AIR")
                                 ? size.factor
                                 : shelfPrice(item.price * size.factor * (imported ? 1.3 : 1));
        product.costRatio = m_random.uniform(0.68, 0.86);
        // Loose and single items sell far more often than cartons.
        product.weight =
            aisle.popularity * std::exp(0.9 * m_random.normal()) / (1.0 + 0.7 * double(sizeIndex));
        product.lastSellingDay =
            m_random.chance(0.025) ? int(m_random.between(m_days * 6 / 10, m_days - 1)) : m_days;
        product.createdAt = std::round((created + m_random.uniform(0, 5 * secondsPerDay)) * 1000) / 1000;
        product.updatedAt = product.createdAt;
        m_productStates.push_back(std::move(product));
    }

    void makeCustomers()
    {
        const int count = std::max(10, int(std::lround(fullCustomers * m_options.scale)));
        std::set<std::string> phones;
        std::vector<double> joined;
        for (int i = 0; i < count; ++i) {
            // A tenth came over from the old paper book; the rest joined as the shop grew.
            const double when =
                i < count / 10 ? m_firstEpoch - m_random.uniform(1, 30) * secondsPerDay
                               : m_firstEpoch + std::pow(m_random.uniform(), 0.8) * m_days * secondsPerDay;
            joined.push_back(std::round(when * 1000) / 1000);
        }
        std::sort(joined.begin(), joined.end());
        for (double when : joined) {
            CustomerState customer;
            customer.id = uuid(m_random);
            const std::string first = m_random.pick(firstNames);
            const std::string last = m_random.pick(surnames);
            customer.name = first + " " + last;
            do
                customer.phone = m_random.pick(networkPrefixes) + digits(m_random, 7);
            while (!phones.insert(customer.phone).second);
            if (m_random.chance(0.35)) {
                customer.email = first + "." + last + std::to_string(m_random.between(1, 99)) + "@gmail.com";
                std::transform(customer.email.begin(), customer.email.end(), customer.email.begin(),
                               [](unsigned char c) { return char(std::tolower(c)); });
            }
            if (m_random.chance(0.6))
                customer.address =
                    format("House %d, %s", int(m_random.between(1, 120)), m_random.pick(areas));
            customer.createdAt = when;
            if (m_random.chance(0.04)) {
                customer.allowCredit = true;
                static const std::vector<double> limits = {500, 1000, 2000, 5000};
                customer.creditLimit = m_random.pick(limits);
            }
            m_customerStates.push_back(std::move(customer));
        }
    }

    void planDays()
    {
        // Busier weekends, a December rush and a shop that grows over the years.
        static const double weekdayFactor[8] = {0, 0.9, 0.9, 0.95, 1.0, 1.15, 1.5, 1.2}; // Mon..Sun
        std::vector<double> weights(static_cast<size_t>(m_days));
        double total = 0;
        for (int day = 0; day < m_days; ++day) {
            const QDate date = m_firstDay.addDays(day);
            const double trend = 0.65 + 0.7 * (m_days > 1 ? double(day) / (m_days - 1) : 1.0);
            const double season =
                date.month() == 12 ? (date.day() >= 15 && date.day() <= 24 ? 1.5 : 1.2) : 1.0;
            weights[size_t(day)] =
                trend * weekdayFactor[date.dayOfWeek()] * season * m_random.uniform(0.85, 1.15);
            total += weights[size_t(day)];
        }
        // Cumulative rounding hands out exactly the wanted number of sales.
        m_salesPerDay.resize(size_t(m_days));
        double cumulative = 0;
        std::int64_t given = 0;
        for (int day = 0; day < m_days; ++day) {
            cumulative += weights[size_t(day)];
            const std::int64_t upTo = std::llround(double(m_salesTotal) * cumulative / total);
            m_salesPerDay[size_t(day)] = int(upTo - given);
            given = upTo;
        }

        // One shift a day; the busiest days get a second cashier for the afternoon.
        const int shifts = std::max(m_days, int(std::lround(fullShifts * m_options.scale)));
        std::vector<int> byBusiness(static_cast<size_t>(m_days));
        for (int day = 0; day < m_days; ++day)
            byBusiness[size_t(day)] = day;
        std::stable_sort(byBusiness.begin(), byBusiness.end(),
                         [&](int a, int b) { return weights[size_t(a)] > weights[size_t(b)]; });
        m_twoShifts.assign(size_t(m_days), false);
        for (int i = 0; i < std::min(m_days, shifts - m_days); ++i)
            m_twoShifts[size_t(byBusiness[size_t(i)])] = true;

        // How much each product sells a day sets how much stock the shop keeps of it.
        const double linesPerDay = double(m_salesTotal) / m_days * 3.0;
        const double weightTotal =
            std::accumulate(m_productStates.begin(), m_productStates.end(), 0.0,
                            [](double sum, const ProductState& p) { return sum + p.weight; });
        for (ProductState& product : m_productStates) {
            if (!product.tracksStock)
                continue;
            const bool loose = product.unitRaw != "each";
            const double perDay = linesPerDay * product.weight / weightTotal * (loose ? 1.6 : 1.4);
            product.reorderLevel = loose ? std::clamp(std::ceil(perDay * 3), 5.0, 60.0)
                                         : std::clamp(std::ceil(perDay * 4), 5.0, 120.0);
            product.caseSize = loose ? 5 : (perDay * 21 >= 24 ? 12 : 1);
            product.restockTo = std::max(product.reorderLevel * 3, std::ceil(perDay * 21));
        }
        m_repayments.resize(size_t(m_days));
        m_refunds.resize(size_t(m_days));
    }

    int pickProduct(int day)
    {
        for (int attempt = 0; attempt < 20; ++attempt) {
            const double target = m_random.uniform() * m_productWeightSum.back();
            const auto found = std::upper_bound(m_productWeightSum.begin(), m_productWeightSum.end(), target);
            const int index = int(std::min<std::ptrdiff_t>(found - m_productWeightSum.begin(),
                                                           std::ptrdiff_t(m_productStates.size()) - 1));
            if (m_productStates[size_t(index)].lastSellingDay >= day)
                return index;
        }
        return 0;
    }

    void writeMovement(const ProductState& product, const char* type, double change,
                       const std::string& reason, const std::string& supplier, const std::string& sale,
                       int user, double when, std::optional<double> unitCost = {}, double costBefore = 0,
                       double costAfter = 0)
    {
        m_movements.text(uuid(m_random))
            .text(product.id)
            .text(type)
            .real(change)
            .real(product.stock)
            .text(reason)
            .text(supplier)
            .textOrNull(sale)
            .text(m_userIds[size_t(user)])
            .real(when);
        if (unitCost)
            m_movements.real(*unitCost).real(costBefore).real(costAfter);
        else
            m_movements.null().null().null();
        m_movements.row();
    }

    void deliver(ProductState& product, int day, double when, bool opening)
    {
        double quantity = std::max(product.restockTo - std::max(product.stock, 0.0), product.caseSize);
        quantity = round3(std::ceil(quantity / product.caseSize) * product.caseSize);
        const double unitCost = supplierCostOn(product, day);
        const double before = product.cost;
        const double after =
            product.stock <= 0
                ? unitCost
                : round4((quantity * unitCost + product.stock * before) / (quantity + product.stock));
        product.stock = round3(product.stock + quantity);
        product.cost = after;
        product.updatedAt = std::max(product.updatedAt, when);
        product.restockDue = false;
        writeMovement(product, opening ? "stockIn" : "supplierDelivery", quantity,
                      opening ? "Opening stock" : "Weekly delivery", opening ? "" : product.supplier, "", 0,
                      when, unitCost, before, after);
    }

    struct Tender {
        const char* method;
        double amount;
        double tendered;
        std::string reference;
    };

    std::string referenceFor(const char* method, double when)
    {
        if (std::string_view(method) == "mobileMoney")
            return "MP" +
                   QDateTime::fromSecsSinceEpoch(qint64(when), QTimeZone::utc())
                       .toString(QStringLiteral("yyMMdd"))
                       .toStdString() +
                   "." + digits(m_random, 4) + "." + digits(m_random, 6);
        if (std::string_view(method) == "card")
            return "AUTH " + digits(m_random, 6);
        return "";
    }

    double cashTendered(double amount)
    {
        if (m_random.chance(0.3))
            return amount;
        const double step = amount < 5 ? 1 : amount < 20 ? 5 : amount < 50 ? 10 : amount < 200 ? 50 : 100;
        return Rounding::toCents(std::ceil(amount / step - 1e-9) * step);
    }

    void tradeDay(int day)
    {
        const QDate date = m_firstDay.addDays(day);
        const bool lastDay = day == m_days - 1;
        const bool split = m_twoShifts[size_t(day)];

        // Shifts of the day: one long one, or a morning and an afternoon.
        std::vector<ShiftState> shifts(split ? 2 : 1);
        const bool oddWeek = (day / 7) % 2;
        for (size_t s = 0; s < shifts.size(); ++s) {
            ShiftState& shift = shifts[s];
            shift.id = uuid(m_random);
            shift.cashier = split ? int(1 + (s + (oddWeek ? 1 : 0)) % 2)
                                  : (m_random.chance(0.06) ? 0 : (oddWeek ? 2 : 1));
            shift.openedAt = at(day, (s == 0 ? 6.75 : 13.9) + m_random.uniform(-0.1, 0.1));
            shift.closedAt = at(day, (split && s == 0 ? 14.1 : 21.3) + m_random.uniform(-0.1, 0.2));
            shift.openingFloat = split && s == 1 ? 200 : 300;
        }
        auto shiftAt = [&](double when) -> ShiftState& {
            return shifts.size() > 1 && when >= at(day, 14.0) ? shifts[1] : shifts[0];
        };

        // Morning deliveries of what ran low yesterday.
        for (ProductState& product : m_productStates) {
            if (day == 0 && product.tracksStock)
                deliver(product, day, product.createdAt, true);
            else if (product.restockDue && product.lastSellingDay > day)
                deliver(product, day, at(day, 6.5 + m_random.uniform(0, 0.4)), false);
        }

        // Lunch and after-work peaks over a steady trickle.
        const int count = m_salesPerDay[size_t(day)];
        std::vector<double> times;
        times.reserve(size_t(count));
        for (int i = 0; i < count; ++i) {
            const double kind = m_random.uniform();
            double hours =
                kind < 0.35 ? m_random.uniform(7, 21)
                            : (kind < 0.65 ? 12.5 + 1.5 * m_random.normal() : 18 + 1.5 * m_random.normal());
            times.push_back(at(day, std::clamp(hours, 7.0, 20.99)));
        }
        std::sort(times.begin(), times.end());

        const std::string datePart = date.toString(QStringLiteral("yyyyMMdd")).toStdString();
        // Sales plan returns for later days only, so this day's list is complete.
        std::vector<PlannedRefund>& refunds = m_refunds[size_t(day)];
        std::stable_sort(refunds.begin(), refunds.end(),
                         [](const PlannedRefund& a, const PlannedRefund& b) { return a.when < b.when; });
        size_t nextRefund = 0;
        for (double when : times) {
            for (; nextRefund < refunds.size() && refunds[nextRefund].when <= when; ++nextRefund)
                refund(refunds[nextRefund], datePart, shiftAt(refunds[nextRefund].when));
            sell(day, when, datePart, shiftAt(when));
        }
        for (; nextRefund < refunds.size(); ++nextRefund)
            refund(refunds[nextRefund], datePart, shiftAt(refunds[nextRefund].when));
        std::vector<PlannedRefund>().swap(refunds);

        for (const Repayment& repayment : m_repayments[size_t(day)]) {
            CustomerState& customer = m_customerStates[size_t(repayment.customer)];
            const double when = at(day, m_random.uniform(8, 20));
            ShiftState& shift = shiftAt(when);
            const char* method = m_random.chance(0.55) ? "cash" : "mobileMoney";
            const double amount = std::min(repayment.amount, customer.owed);
            if (amount <= 0)
                continue;
            customer.owed = Rounding::toCents(customer.owed - amount);
            if (std::string_view(method) == "cash")
                shift.cashIn += amount;
            m_customerPayments.text(uuid(m_random))
                .text(customer.id)
                .real(amount)
                .text(method)
                .text(referenceFor(method, when))
                .text("")
                .text(m_userIds[size_t(shift.cashier)])
                .text(shift.id)
                .real(when)
                .row();
        }
        m_repayments[size_t(day)].clear();

        for (size_t s = 0; s < shifts.size(); ++s) {
            ShiftState& shift = shifts[s];
            const bool open = lastDay && s + 1 == shifts.size();
            if (!open && m_random.chance(0.25)) {
                static const std::vector<const char*> reasons = {
                    "Transport for delivery", "Cleaning supplies", "Staff lunch",
                    "ECG prepaid units",      "Water bill",        "Kayayei porter"};
                payCash(shift, "payOut", -double(m_random.between(2, 30) * 5), m_random.pick(reasons));
            }
            if (!open && m_random.chance(0.08))
                payCash(shift, "payIn", double(m_random.between(1, 4) * 50), "Float top-up");
            auditNoSales(shift);
            writeShift(shift, open);
        }

        if (date.month() == 12 && date.day() == 31 && m_options.progress)
            m_options.progress(QStringLiteral("%1: %2 sales so far").arg(date.year()).arg(m_sequence));
    }

    void payCash(ShiftState& shift, const char* type, double signedAmount, const char* reason)
    {
        shift.cashIn += signedAmount;
        const double when =
            std::round(m_random.uniform(shift.openedAt + 1800, shift.closedAt - 600) * 1000) / 1000;
        m_cashMovements.text(uuid(m_random))
            .text(shift.id)
            .text(type)
            .real(std::abs(signedAmount))
            .text(reason)
            .text(m_userIds[size_t(shift.cashier)])
            .real(when)
            .row();
        if (std::string_view(type) == "payOut")
            writeAudit(when, "payOut", shift.cashier, {}, std::abs(signedAmount), {}, reason, {});
    }

    void writeShift(const ShiftState& shift, bool open)
    {
        m_shifts.text(shift.id).text(m_userIds[size_t(shift.cashier)]).real(shift.openedAt);
        if (open) {
            m_shifts.null().real(shift.openingFloat).null().null().null().text("").text("open").row();
            return;
        }
        const double expected = Rounding::toCents(shift.openingFloat + shift.cashIn);
        static const std::vector<double> misses = {0.5, 1, 2, 5, 10, 20};
        const double variance =
            m_random.chance(0.85) ? 0 : m_random.pick(misses) * (m_random.chance(0.6) ? -1 : 1);
        m_shifts.real(shift.closedAt)
            .real(shift.openingFloat)
            .real(expected)
            .real(Rounding::toCents(expected + variance))
            .real(variance)
            .text(variance == 0 ? "" : (variance < 0 ? "Short at count" : "Over at count"))
            .text("closed")
            .row();
    }

    void sell(int day, double when, const std::string& datePart, ShiftState& shift)
    {
        const std::string saleId = uuid(m_random);
        const std::string invoice = format("INV-%s-%04lld", datePart.c_str(), (long long)++m_sequence);
        const int cashier = shift.cashier;

        // Regulars come back: earlier customers are picked more often.
        int customerIndex = -1;
        if (m_random.chance(0.22)) {
            while (m_customersJoined < m_customerStates.size() &&
                   m_customerStates[m_customersJoined].createdAt <= when)
                ++m_customersJoined;
            if (m_customersJoined > 0)
                customerIndex = int(double(m_customersJoined) * std::pow(m_random.uniform(), 1.6));
        }
        CustomerState* customer = customerIndex >= 0 ? &m_customerStates[size_t(customerIndex)] : nullptr;

        static const double lineShares[6] = {0.22, 0.22, 0.20, 0.15, 0.11, 0.10};
        double draw = m_random.uniform();
        int lineCount = 1;
        while (lineCount < 6 && draw >= lineShares[lineCount - 1])
            draw -= lineShares[lineCount++ - 1];

        std::vector<SoldLine> lines;
        std::vector<TaxCalculator::LineInput> inputs;
        for (int i = 0; i < lineCount; ++i) {
            int index = pickProduct(day);
            for (int retry = 0; retry < 5 && std::any_of(lines.begin(), lines.end(),
                                                         [&](const SoldLine& l) { return l.product == index; });
                 ++retry)
                index = pickProduct(day);
            if (std::any_of(lines.begin(), lines.end(), [&](const SoldLine& l) { return l.product == index; }))
                continue;
            const ProductState& product = m_productStates[size_t(index)];
            double quantity = 1;
            if (product.unitRaw == "kg")
                quantity = round3(m_random.uniform(0.25, 3.0));
            else if (product.unitRaw == "litre")
                quantity = double(m_random.between(1, 8)) * 0.5;
            else if (product.typeRaw != "service" && m_random.chance(0.25))
                quantity = m_random.chance(0.6) ? 2 : double(m_random.between(3, 6));
            const double price = priceOn(product, day);
            const double gross = price * quantity;
            const double ownDiscount =
                m_random.chance(0.02) ? Rounding::toCents(gross * (m_random.chance(0.5) ? 0.05 : 0.1)) : 0;
            lines.push_back(
                {index, quantity, price, product.tracksStock ? product.cost : supplierCostOn(product, day)});
            inputs.push_back({gross, ownDiscount, product.taxable ? 0.2 : 0.0});
        }

        double netBefore = 0;
        for (const auto& input : inputs)
            netBefore += input.grossAmount - input.lineDiscount;
        const bool voided = m_random.chance(voidedShare);
        double saleDiscount = 0;
        if (m_random.chance(0.01) && netBefore > 20)
            saleDiscount = std::min(double(m_random.pick(std::vector<int>{1, 2, 5, 10})),
                                    Rounding::toCents(netBefore * 0.1));
        std::int64_t redeemed = 0;
        if (customer && !voided && customer->points >= 100 && m_random.chance(0.08)) {
            redeemed = std::min<std::int64_t>(customer->points / 100, 3) * 100;
            while (redeemed > 0 && redeemed * 0.05 > (netBefore - saleDiscount) * 0.5)
                redeemed -= 100;
        }
        const double pointsDiscount = Rounding::toCents(double(redeemed) * 0.05);
        const CartCalculation cart = TaxCalculator::calculate(inputs, saleDiscount + pointsDiscount, false);
        const std::int64_t earned = customer && !voided ? std::int64_t(std::floor(cart.total / 10.0)) : 0;

        const double voidedAt = std::round((when + m_random.uniform(60, 600)) * 1000) / 1000;
        std::vector<double> lineDiscounts;
        for (const LineCalculation& priced : cart.lines)
            lineDiscounts.push_back(Rounding::toCents(priced.lineDiscount + priced.saleDiscountShare));

        std::optional<PlannedRefund> planned;
        std::vector<double> returned(lines.size(), 0);
        bool fullyReturned = false;
        // A store of a few days still sees some of its returns.
        const int returnDay =
            day + int(m_refundRandom.between(1, std::min(daysToReturn, std::max(1, m_days / 2))));
        if (m_refundRandom.chance(returnedShare) && !voided && returnDay < m_days) {
            PlannedRefund plan;
            plan.when = at(returnDay, m_refundRandom.uniform(8, 20.5));
            plan.originalId = saleId;
            plan.originalInvoice = invoice;
            plan.customer = customerIndex;
            const bool everything = m_refundRandom.chance(0.35);
            const size_t only = size_t(m_refundRandom.between(0, std::int64_t(lines.size()) - 1));
            double netReturned = 0;
            for (size_t i = 0; i < lines.size(); ++i) {
                const SoldLine& line = lines[i];
                if (!everything && i != only)
                    continue;
                double quantity = line.quantity;
                // Of a pack bought several times over, some may come back.
                if (!everything && m_productStates[size_t(line.product)].unitRaw == "each" && quantity >= 2)
                    quantity = double(m_refundRandom.between(1, std::int64_t(quantity)));
                returned[i] = quantity;
                const double unitDiscount = lineDiscounts[i] / line.quantity;
                plan.lines.push_back(
                    {line.product, quantity, line.unitPrice, line.unitCost, inputs[i].taxRate, unitDiscount});
                netReturned += quantity * (line.unitPrice - unitDiscount);
            }
            // The customer's points follow the share of the sale's net that came back.
            fullyReturned = std::equal(returned.begin(), returned.end(), lines.begin(),
                                       [](double back, const SoldLine& line) { return back == line.quantity; });
            const double net = cart.total - cart.taxTotal;
            const double share = std::clamp(net > 0 ? netReturned / net : 1.0, 0.0, 1.0);
            plan.pointsToGiveBack =
                fullyReturned ? redeemed
                              : std::min<std::int64_t>(redeemed, std::llround(share * double(redeemed)));
            plan.pointsToTakeBack =
                fullyReturned ? earned : std::min<std::int64_t>(earned, std::llround(share * double(earned)));
            plan.pointsValue =
                redeemed < 1
                    ? 0
                    : Rounding::toCents(pointsDiscount * double(plan.pointsToGiveBack) / double(redeemed));
            planned = std::move(plan);
        }

        SaleRow row;
        row.id = saleId;
        row.invoice = invoice;
        row.when = when;
        row.status = voided ? "voided" : "completed";
        if (planned)
            row.status = fullyReturned ? "refunded" : "partiallyRefunded";
        row.subtotal = cart.subtotal;
        row.lineDiscountTotal = cart.lineDiscountTotal;
        row.saleDiscount = Rounding::toCents(cart.saleDiscount - pointsDiscount);
        row.taxTotal = cart.taxTotal;
        row.total = cart.total;
        row.pointsEarned = earned;
        row.pointsRedeemed = redeemed;
        row.pointsDiscount = pointsDiscount;
        if (voided) {
            static const std::vector<const char*> reasons = {"Customer changed mind", "Wrong item scanned",
                                                             "Payment failed", "Duplicate sale"};
            row.voidedAt = voidedAt;
            row.voidReason = m_random.pick(reasons);
            // A cashier voids with the admin's approval.
            row.voidedByName = cashier == 0
                                   ? m_userNames[0]
                                   : m_userNames[size_t(cashier)] + " (approved by " + m_userNames[0] + ")";
        }
        row.cashier = cashier;
        row.customerId = customer ? customer->id : "";
        row.shiftId = shift.id;
        if (planned) {
            row.pointsReversed = planned->pointsToTakeBack;
            row.pointsReturned = planned->pointsToGiveBack;
        }
        writeSale(row);

        for (size_t i = 0; i < lines.size(); ++i) {
            const SoldLine& line = lines[i];
            writeItem(saleId, m_productStates[size_t(line.product)], line.quantity, line.unitPrice,
                      line.unitCost, inputs[i].taxRate, lineDiscounts[i], returned[i]);
        }

        const bool onAccount =
            writePayments(saleId, when, cart.total, customer, customerIndex, day, voided, shift);
        if (planned) {
            planned->onAccount = onAccount;
            m_refunds[size_t(returnDay)].push_back(std::move(*planned));
        }

        const std::string reason = "Sale " + invoice;
        for (const SoldLine& line : lines) {
            ProductState& product = m_productStates[size_t(line.product)];
            if (!product.tracksStock)
                continue;
            // Stock is never allowed below zero: an emergency delivery arrives first.
            if (product.stock < line.quantity)
                deliver(product, day, std::round((when - m_random.uniform(300, 1800)) * 1000) / 1000, false);
            product.stock = round3(product.stock - line.quantity);
            writeMovement(product, "saleDeduction", -line.quantity, reason, "", saleId, cashier, when);
            if (product.stock <= product.reorderLevel)
                product.restockDue = true;
        }
        if (voided) {
            const std::string voidReason = "Void " + invoice;
            for (const SoldLine& line : lines) {
                ProductState& product = m_productStates[size_t(line.product)];
                if (!product.tracksStock)
                    continue;
                product.stock = round3(product.stock + line.quantity);
                writeMovement(product, "voidRestock", line.quantity, voidReason, "", saleId, 0, voidedAt);
            }
        }

        auditSale(when, invoice, cashier, lines, customer, redeemed, pointsDiscount);
        if (voided)
            writeAudit(voidedAt, "void", cashier, approverFor(cashier), cart.total, invoice, row.voidReason, {});
        if (customer && redeemed > 0) {
            customer->points -= redeemed;
            writeLoyalty(*customer, -redeemed, "redeemed", invoice, pointsDiscount, cashier, when);
        }
        if (customer && earned > 0) {
            customer->points += earned;
            writeLoyalty(*customer, earned, "earned", invoice, 0, cashier, when);
        }
    }

    // Approval is switched on for discounts, prices, voids and No Sale; an admin approves her own.
    std::string approverFor(int cashier) const { return cashier == 0 ? std::string() : m_userNames[0]; }

    void writeAudit(double when, const char* action, int cashier, const std::string& approver,
                    std::optional<double> amount, const std::string& reference, const std::string& reason,
                    const QString& details)
    {
        m_audit.text(uuid(m_auditRandom))
            .real(when)
            .text(action)
            .text(m_userNames[size_t(cashier)])
            .text(approver);
        if (amount)
            m_audit.real(Rounding::toCents(*amount));
        else
            m_audit.null();
        m_audit.text(reference).text(reason).text(details.toStdString()).row();
    }

    // The rows the counter writes after a sale. The sale itself was drawn without them, so the
    // history stays the same row for row whether or not the log is there.
    void auditSale(double when, const std::string& invoice, int cashier, const std::vector<SoldLine>& lines,
                   const CustomerState* customer, std::int64_t redeemed, double pointsValue)
    {
        static const std::vector<const char*> discountReasons = {
            "", "Loyal customer", "Owner's friend", "Slow-moving stock", "Large order paid in full"};
        static const std::vector<const char*> priceReasons = {
            "", "", "Regular customer", "Bulk buy", "Shelf tag was lower", "Matched the market price", "Dented tin"};
        const auto money = [](double amount) { return Currency::format(amount, Currency::fixedSign); };
        if (m_auditRandom.chance(discountOverLimitShare)) {
            double gross = 0;
            for (const SoldLine& line : lines)
                gross += line.quantity * line.unitPrice;
            const double discount = Rounding::toCents(gross * m_auditRandom.uniform(0.11, 0.3));
            writeAudit(when, "discount", cashier, approverFor(cashier), discount, invoice,
                       m_auditRandom.pick(discountReasons),
                       QStringLiteral("%1 off %2 (%3); limit 10% of the sale")
                           .arg(money(discount), money(gross), Currency::percentText(discount / gross)));
        }
        if (m_auditRandom.chance(priceChangedShare)) {
            const SoldLine& line = lines[size_t(m_auditRandom.between(0, std::int64_t(lines.size()) - 1))];
            const ProductState& product = m_productStates[size_t(line.product)];
            // The line was rung up at the lowered price; the shelf asked more.
            const double shelf = shelfPrice(line.unitPrice * m_auditRandom.uniform(1.05, 1.25));
            writeAudit(when, "priceChange", cashier, approverFor(cashier), line.unitPrice * line.quantity, invoice,
                       m_auditRandom.pick(priceReasons),
                       QStringLiteral("%1: %2 → %3 × %4")
                           .arg(QString::fromStdString(product.name), money(shelf), money(line.unitPrice),
                                Quantity::format(line.quantity,
                                                 SellingUnits::fromRaw(QString::fromStdString(product.unitRaw)))));
        }
        if (redeemed > 0)
            writeAudit(when, "redeemPoints", cashier, {}, pointsValue, invoice, {},
                       QStringLiteral("%1 points for %2").arg(redeemed).arg(QString::fromStdString(customer->name)));
    }

    void auditNoSales(const ShiftState& shift)
    {
        static const std::vector<const char*> reasons = {"Change for a customer", "Coins for the float",
                                                         "Checked the float", "Drawer didn't close",
                                                         "Counted the notes"};
        const std::int64_t count = m_auditRandom.between(0, mostNoSalesPerShift);
        for (std::int64_t i = 0; i < count; ++i) {
            const double when =
                std::round(m_auditRandom.uniform(shift.openedAt + 600, shift.closedAt - 300) * 1000) / 1000;
            writeAudit(when, "noSale", shift.cashier, approverFor(shift.cashier), std::nullopt, {},
                       m_auditRandom.pick(reasons), {});
        }
    }

    // Whether the sale went on the customer's account.
    bool writePayments(const std::string& saleId, double when, double total, CustomerState* customer,
                       int customerIndex, int day, bool voided, ShiftState& shift)
    {
        std::vector<Tender> tenders;
        if (customer && customer->allowCredit && !voided && customer->owed + total <= customer->creditLimit &&
            m_random.chance(0.6)) {
            tenders.push_back({"onAccount", total, total, ""});
            customer->owed = Rounding::toCents(customer->owed + total);
            const int due = day + int(m_random.between(3, 30));
            if (due < m_days)
                m_repayments[size_t(due)].push_back({customerIndex, total});
        } else if (total >= 10 && m_random.chance(0.07)) {
            const double first = Rounding::toCents(total * m_random.uniform(0.3, 0.7));
            const char* method = m_random.chance(0.7) ? "mobileMoney" : "card";
            tenders.push_back({method, first, first, referenceFor(method, when)});
            const double rest = Rounding::toCents(total - first);
            tenders.push_back({"cash", rest, cashTendered(rest), ""});
        } else {
            const double kind = m_random.uniform();
            const char* method = kind < 0.68 ? "cash" : (kind < 0.88 ? "mobileMoney" : "card");
            const bool cash = std::string_view(method) == "cash";
            tenders.push_back(
                {method, total, cash ? cashTendered(total) : total, cash ? "" : referenceFor(method, when)});
        }
        for (const Tender& tender : tenders) {
            const bool cash = std::string_view(tender.method) == "cash";
            if (cash && !voided)
                shift.cashIn += tender.amount;
            writePayment(uuid(m_random), saleId, tender.method, tender.amount, tender.tendered,
                         Rounding::toCents(tender.tendered - tender.amount), tender.reference, when);
        }
        return std::string_view(tenders.front().method) == "onAccount";
    }

    void writePayment(const std::string& id, const std::string& saleId, const char* method, double amount,
                      double tendered, double change, const std::string& reference, double when)
    {
        m_payments.text(id)
            .text(saleId)
            .text(method)
            .real(amount)
            .real(tendered)
            .real(change)
            .text(reference)
            .real(when)
            .row();
    }

    void writeSale(const SaleRow& row)
    {
        m_sales.text(row.id)
            .text(row.invoice)
            .real(row.when)
            .text(row.status)
            .real(row.subtotal)
            .real(row.lineDiscountTotal)
            .real(row.saleDiscount)
            .real(row.taxTotal)
            .real(row.total)
            .integer(row.pointsEarned)
            .integer(row.pointsRedeemed)
            .real(row.pointsDiscount);
        if (row.voidedAt)
            m_sales.real(*row.voidedAt).text(row.voidReason).text(row.voidedByName);
        else
            m_sales.null().null().null();
        m_sales.text(m_userIds[size_t(row.cashier)])
            .textOrNull(row.customerId)
            .text(row.shiftId)
            .integer(row.pointsReversed)
            .integer(row.pointsReturned)
            .textOrNull(row.refundOfSaleID)
            .textOrNull(row.refundReason)
            .row();
    }

    void writeItem(const std::string& saleId, const ProductState& product, double quantity, double unitPrice,
                   double unitCost, double taxRate, double lineDiscount, double returnedQuantity)
    {
        m_items.text(uuid(m_random))
            .text(product.id)
            .text(product.name)
            .text(product.sku)
            .real(quantity)
            .real(unitPrice)
            .real(unitCost)
            .real(taxRate)
            .real(lineDiscount)
            .flag(false)
            .text(product.typeRaw)
            .text(product.unitRaw)
            .text(product.taxable ? m_taxedComponents : m_exemptComponents)
            .text(saleId)
            .real(returnedQuantity)
            .row();
    }

    // A new Sale with negative lines and one negative payment, as a refund at the counter writes it:
    // the goods go back into stock, the points follow, the money leaves the till or the account.
    void refund(const PlannedRefund& plan, const std::string& datePart, ShiftState& shift)
    {
        static const std::vector<const char*> reasons = {"Faulty item", "Wrong size", "Past its date",
                                                         "Customer changed mind", "Damaged packaging"};
        SaleRow row;
        row.id = uuid(m_refundRandom);
        row.invoice = format("INV-%s-%04lld", datePart.c_str(), (long long)++m_sequence);
        row.when = plan.when;
        row.status = "refunded";
        for (const ReturnedLine& line : plan.lines) {
            const double taxable = line.quantity * (line.unitPrice - line.unitDiscount);
            const double tax = taxable * line.taxRate;
            row.subtotal -= line.quantity * line.unitPrice;
            row.lineDiscountTotal -= line.quantity * line.unitDiscount;
            row.taxTotal -= tax;
            row.total -= taxable + tax;
        }
        row.subtotal = Rounding::toCents(row.subtotal);
        row.lineDiscountTotal = Rounding::toCents(row.lineDiscountTotal);
        row.taxTotal = Rounding::toCents(row.taxTotal);
        row.total = Rounding::toCents(row.total);

        CustomerState* customer = plan.customer >= 0 ? &m_customerStates[size_t(plan.customer)] : nullptr;
        // Points given back first, then taken back, never below a balance of nothing.
        std::int64_t takenBack = 0;
        if (customer) {
            row.pointsRedeemed = -plan.pointsToGiveBack;
            takenBack = std::min(plan.pointsToTakeBack, customer->points + plan.pointsToGiveBack);
            row.pointsEarned = -takenBack;
        }
        row.cashier = shift.cashier;
        row.customerId = customer ? customer->id : "";
        row.shiftId = shift.id;
        row.refundOfSaleID = plan.originalId;
        row.refundReason = m_refundRandom.pick(reasons);
        writeSale(row);

        const std::string reason = "Refund " + row.invoice;
        for (const ReturnedLine& line : plan.lines) {
            ProductState& product = m_productStates[size_t(line.product)];
            writeItem(row.id, product, -line.quantity, line.unitPrice, line.unitCost, line.taxRate,
                      -line.quantity * line.unitDiscount, 0);
            if (!product.tracksStock)
                continue;
            product.stock = round3(product.stock + line.quantity);
            writeMovement(product, "returnRestock", line.quantity, reason, "", row.id, shift.cashier,
                          plan.when);
        }

        const char* method =
            plan.onAccount ? "onAccount" : (m_refundRandom.chance(0.85) ? "cash" : "mobileMoney");
        writePayment(uuid(m_refundRandom), row.id, method, row.total, 0, 0, "", plan.when);
        writeAudit(plan.when, "refund", shift.cashier, {}, -row.total,
                   row.invoice + " (refund of " + plan.originalInvoice + ")", row.refundReason,
                   QStringLiteral("%1 line(s), %2")
                       .arg(plan.lines.size())
                       .arg(PaymentMethodTypes::label(PaymentMethodTypes::fromRaw(QString::fromUtf8(method)))));
        if (std::string_view(method) == "cash")
            shift.cashIn += row.total;
        if (plan.onAccount && customer)
            customer->owed = Rounding::toCents(customer->owed + row.total);

        if (customer && plan.pointsToGiveBack > 0) {
            customer->points += plan.pointsToGiveBack;
            writeLoyalty(*customer, plan.pointsToGiveBack, "refundReturn", row.invoice, plan.pointsValue,
                         shift.cashier, plan.when);
        }
        if (customer && takenBack > 0) {
            customer->points -= takenBack;
            writeLoyalty(*customer, -takenBack, "refundReversal", row.invoice, 0, shift.cashier, plan.when);
        }
    }

    void writeLoyalty(const CustomerState& customer, std::int64_t points, const char* kind,
                      const std::string& invoice, double value, int user, double when)
    {
        m_loyalty.text(uuid(m_random))
            .text(customer.id)
            .integer(points)
            .integer(customer.points)
            .text(kind)
            .text(invoice)
            .text("")
            .real(value)
            .text(m_userIds[size_t(user)])
            .real(when)
            .row();
    }

    void writeProductsAndCustomers()
    {
        const double lastPriceChange = pricePeriods() > 0 ? at(pricePeriods() * daysPerPricePeriod, 8.5) : 0;
        for (const ProductState& product : m_productStates) {
            double updated = std::max(product.updatedAt, lastPriceChange);
            if (product.lastSellingDay < m_days)
                updated = at(std::min(product.lastSellingDay + 1, m_days - 1), 9);
            m_products.text(product.id)
                .text(product.sku)
                .text(product.barcode)
                .text(product.name)
                .real(product.tracksStock ? product.cost : supplierCostOn(product, m_days - 1))
                .real(priceOn(product, m_days - 1))
                .real(product.taxable ? 0.2 : 0.0)
                .flag(product.taxable)
                .textOrNull(product.taxable ? m_taxGroupId : "")
                .real(product.tracksStock ? product.stock : 0)
                .real(product.reorderLevel)
                .text(product.supplier)
                .flag(product.lastSellingDay >= m_days)
                .text(product.typeRaw)
                .text(product.unitRaw)
                .flag(false)
                .real(product.createdAt)
                .real(updated)
                .text(m_categoryIds[size_t(product.category)])
                .row();
        }
        for (const CustomerState& customer : m_customerStates) {
            m_customers.text(customer.id)
                .text(customer.name)
                .text(customer.phone)
                .text(customer.email)
                .text(customer.address)
                .integer(customer.points)
                .real(customer.createdAt)
                .flag(customer.allowCredit)
                .real(customer.creditLimit)
                .row();
        }
    }

    void writeSettings()
    {
        // A shop that has run for years has long passed the one-time upgrades.
        m_settings.text(uuid(m_random))
            .text("Nyame Adom Supermarket")
            .text("14 Spintex Road, Accra")
            .text("0302 541 187")
            .text(m_taxGroupId)
            .real(at(m_days - 2, 21.6))
            .flag(true)
            .flag(true)
            .integer(m_sequence)
            .flag(true)
            .row();
    }

    Database& m_db;
    const StoreGenerator::Options& m_options;
    Random m_random;
    Random m_refundRandom;
    Random m_auditRandom;
    const int m_days;
    const std::int64_t m_salesTotal;
    const QDate m_firstDay;
    const double m_firstEpoch;

    Insert m_users, m_categories, m_suppliers, m_taxes, m_taxGroups, m_groupTaxes, m_products, m_customers,
        m_shifts, m_sales, m_items, m_payments, m_movements, m_cashMovements, m_customerPayments, m_loyalty,
        m_settings, m_audit;

    std::vector<Aisle> m_catalogue;
    std::vector<std::string> m_userIds; // admin first, then the two cashiers
    std::vector<std::string> m_userNames;
    std::vector<std::string> m_categoryIds;
    std::string m_taxGroupId;
    std::string m_taxedComponents;
    std::string m_exemptComponents;
    std::set<std::string> m_barcodes;
    std::vector<ProductState> m_productStates;
    std::vector<double> m_productWeightSum;
    std::vector<CustomerState> m_customerStates;
    size_t m_customersJoined = 0;
    std::vector<int> m_salesPerDay;
    std::vector<bool> m_twoShifts;
    std::vector<std::vector<Repayment>> m_repayments;
    std::vector<std::vector<PlannedRefund>> m_refunds; // by the day they are made
    std::int64_t m_sequence = 0;
};

void removeStoreFiles(const QString& path)
{
    for (const QString& suffix :
         {QString(), QStringLiteral("-wal"), QStringLiteral("-shm"), QStringLiteral("-journal")})
        QFile::remove(path + suffix);
}

} // namespace

StoreGenerator::Summary StoreGenerator::generate(const QString& path)
{
    QElapsedTimer timer;
    timer.start();
    const QString partial = path + QStringLiteral(".partial");
    removeStoreFiles(partial);

    // The program makes the tables itself, so the file is a store in every detail.
    {
        ModelContainer container(partial, POSSchema::description());
    }

    Summary summary;
    try {
        Database db(partial);
        // Nothing to protect until the file is renamed into place.
        db.execute("PRAGMA journal_mode=OFF");
        db.execute("PRAGMA synchronous=OFF");
        db.execute("PRAGMA cache_size=-2097152");
        db.execute("PRAGMA temp_store=MEMORY");
        db.execute("PRAGMA threads=2");
        db.execute("PRAGMA locking_mode=EXCLUSIVE");

        // Building each index once at the end beats keeping it in order through millions of rows.
        std::vector<std::string> indexes;
        {
            sqlite3_stmt* statement = nullptr;
            if (sqlite3_prepare_v2(
                    db.handle(),
                    "SELECT name, sql FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL", -1,
                    &statement, nullptr) != SQLITE_OK)
                db.fail("Listing the indexes");
            std::vector<std::string> names;
            while (sqlite3_step(statement) == SQLITE_ROW) {
                names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
                indexes.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 1)));
            }
            sqlite3_finalize(statement);
            for (const std::string& name : names)
                db.execute("DROP INDEX \"" + name + "\"");
        }

        {
            HistoryWriter writer(db, m_options);
            writer.run();
            summary.rowCounts = writer.rowCounts();
        }
        if (m_options.progress)
            m_options.progress(QStringLiteral("Rows written in %1 s; building indexes")
                                   .arg(timer.elapsed() / 1000.0, 0, 'f', 1));
        for (const std::string& sql : indexes)
            db.execute(sql);
        // A store in daily use has planner statistics from the program's closes; give this one
        // the same, bounded as the program bounds them.
        db.execute("PRAGMA analysis_limit=400");
        db.execute("ANALYZE");
        // The store runs in WAL mode; leave it so, as the program would.
        db.execute("PRAGMA locking_mode=NORMAL");
        db.execute("PRAGMA journal_mode=WAL");
    } catch (...) {
        removeStoreFiles(partial);
        throw;
    }

    removeStoreFiles(path);
    if (!QFile::rename(partial, path)) {
        removeStoreFiles(partial);
        throw StoreError(QStringLiteral("The generated store could not be moved to %1").arg(path));
    }
    summary.fileBytes = QFileInfo(path).size();
    summary.seconds = timer.elapsed() / 1000.0;
    return summary;
}

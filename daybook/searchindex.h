// What the one search looks through: the customers and sales of the shop in memory, each as a line of plain
// words (store::Alphabet::plain), so that a key is answered before the next one.
//
// Words are taken in any order, and each may be a part of one. A sale is found by a word of its own (number,
// goods); further words may be those of its customer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"

namespace veldona {

class SearchIndex {
public:
    struct Customer {
        std::string number; // HSTNO
        std::string name;
        std::vector<std::string> telephones;
        int sales = 0;
    };
    struct Sale {
        std::int64_t number = 0;
        std::size_t customer = 0; // its place among the customers
        Value date;
        std::string goods;
    };
    struct Hit {
        std::size_t customer = 0;
        const Sale* sale = nullptr; // nullptr: the customer is what was found
    };
    struct Answer {
        std::vector<Hit> hits;
        std::size_t count = 0; // of all that fit, also of those that are not among the hits
    };

    // Customers in the order in which they shall be found.
    void setCustomers(std::vector<Customer> customers);
    // Each of a customer set before. Found newest first, the newest being the one of the highest number.
    void setSales(std::vector<Sale> sales);

    [[nodiscard]] const std::vector<Customer>& customers() const { return customers_; }
    // The best `most`: what has the words whole before what begins with them before what holds them;
    // customers before sales. Good until the next set.
    [[nodiscard]] Answer find(std::string_view typed, std::size_t most) const;

private:
    enum Grade : std::uint8_t { None, Inside, Beginning, Whole };
    // Lines of words one behind the other, searched as one text.
    class Lines {
    public:
        void clear();
        void begin(); // a new line, to which words are added
        void add(std::string_view text);
        void addDigits(std::string_view telephone);
        // How well each line holds the word.
        [[nodiscard]] std::vector<Grade> grades(const std::string& word) const;

    private:
        std::string text_;
        std::vector<std::size_t> begins_;
    };

    static void take(Answer& answer, std::size_t most, const std::vector<Grade>& customers,
                     const std::vector<Grade>& sales, const std::vector<Sale>& all);

    std::vector<Customer> customers_;
    std::vector<Sale> sales_;
    Lines customerLines_;
    Lines saleLines_;
};

} // namespace veldona

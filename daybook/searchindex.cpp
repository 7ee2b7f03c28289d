#include "daybook/searchindex.h"

#include <algorithm>
#include <cstring>

#include "platform/store/engine/alphabet.h"

namespace veldona {

namespace {

constexpr char kWordEnd = ' ';
constexpr char kLineEnd = '\n';

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

// All but letters and digits parts words.
bool isOfWord(char letter) {
    return isDigit(letter) || (letter >= 'a' && letter <= 'z') || static_cast<unsigned char>(letter) >= 0x80;
}

bool isBetweenWords(char letter) {
    return letter == kWordEnd || letter == kLineEnd;
}

std::vector<std::string> wordsOf(std::string_view typed) {
    std::vector<std::string> words(1);
    for (const char letter : store::Alphabet::plain(typed)) {
        if (isOfWord(letter))
            words.back() += letter;
        else if (!words.back().empty())
            words.emplace_back();
    }
    if (words.back().empty()) words.pop_back();
    return words;
}

} // namespace

void SearchIndex::Lines::clear() {
    text_.clear();
    begins_.clear();
}

// Each word stands between two signs, so that its ends are seen without looking where the line ends.
void SearchIndex::Lines::begin() {
    begins_.push_back(text_.size());
    text_ += kLineEnd;
}

void SearchIndex::Lines::add(std::string_view text) {
    for (const std::string& word : wordsOf(text)) {
        text_ += word;
        text_ += kWordEnd;
    }
}

// However it is grouped, and however it is typed.
void SearchIndex::Lines::addDigits(std::string_view telephone) {
    const std::size_t before = text_.size();
    for (const char letter : telephone)
        if (isDigit(letter)) text_ += letter;
    if (text_.size() > before) text_ += kWordEnd;
}

std::vector<SearchIndex::Grade> SearchIndex::Lines::grades(const std::string& word) const {
    std::vector<Grade> grades(begins_.size(), None);
    const char* const end = text_.data() + text_.size();
    std::size_t line = 0;
    for (const char* from = text_.data(); from < end;) {
        const auto* hit = static_cast<const char*>(
            memmem(from, static_cast<std::size_t>(end - from), word.data(), word.size()));
        if (!hit) break;
        const auto place = static_cast<std::size_t>(hit - text_.data());
        while (line + 1 < begins_.size() && begins_[line + 1] <= place)
            ++line;
        const Grade grade = !isBetweenWords(hit[-1])           ? Inside
                            : isBetweenWords(hit[word.size()]) ? Whole
                                                               : Beginning;
        grades[line] = std::max(grades[line], grade);
        from = hit + 1;
    }
    return grades;
}

void SearchIndex::setCustomers(std::vector<Customer> customers) {
    customers_ = std::move(customers);
    customerLines_.clear();
    for (const Customer& customer : customers_) {
        customerLines_.begin();
        customerLines_.add(customer.number);
        customerLines_.add(customer.name);
        for (const std::string& telephone : customer.telephones)
            customerLines_.addDigits(telephone);
    }
    setSales({});
}

void SearchIndex::setSales(std::vector<Sale> sales) {
    sales_ = std::move(sales);
    std::stable_sort(sales_.begin(), sales_.end(),
                     [](const Sale& left, const Sale& right) { return left.number > right.number; });
    saleLines_.clear();
    for (Customer& customer : customers_)
        customer.sales = 0;
    for (const Sale& sale : sales_) {
        saleLines_.begin();
        saleLines_.add(std::to_string(sale.number));
        saleLines_.add(sale.goods);
        ++customers_[sale.customer].sales;
    }
}

SearchIndex::Answer SearchIndex::find(std::string_view typed, std::size_t most) const {
    Answer answer;
    const std::vector<std::string> words = wordsOf(typed);
    if (words.empty()) return answer;
    std::vector<Grade> customers(customers_.size(), Whole);
    std::vector<Grade> sales(sales_.size(), Whole);
    std::vector<bool> hasOwnWord(sales_.size(), false);
    for (const std::string& word : words) {
        const std::vector<Grade> ofCustomer = customerLines_.grades(word);
        const std::vector<Grade> ofSale = saleLines_.grades(word);
        for (std::size_t i = 0; i < customers.size(); ++i)
            customers[i] = std::min(customers[i], ofCustomer[i]);
        for (std::size_t i = 0; i < sales.size(); ++i) {
            sales[i] = std::min(sales[i], std::max(ofSale[i], ofCustomer[sales_[i].customer]));
            if (ofSale[i] != None) hasOwnWord[i] = true;
        }
    }
    for (std::size_t i = 0; i < sales.size(); ++i)
        if (!hasOwnWord[i]) sales[i] = None;
    take(answer, most, customers, sales, sales_);
    return answer;
}

void SearchIndex::take(Answer& answer, std::size_t most, const std::vector<Grade>& customers,
                       const std::vector<Grade>& sales, const std::vector<Sale>& all) {
    const auto fits = [](Grade grade) { return grade != None; };
    answer.count = static_cast<std::size_t>(std::count_if(customers.begin(), customers.end(), fits) +
                                            std::count_if(sales.begin(), sales.end(), fits));
    for (const Grade grade : {Whole, Beginning, Inside}) {
        for (std::size_t i = 0; i < customers.size() && answer.hits.size() < most; ++i)
            if (customers[i] == grade) answer.hits.push_back({i, nullptr});
        for (std::size_t i = 0; i < sales.size() && answer.hits.size() < most; ++i)
            if (sales[i] == grade) answer.hits.push_back({all[i].customer, &all[i]});
    }
}

} // namespace veldona

#pragma once

#include <QTest>

#include <memory>
#include <tuple>

// A table of test data with one short line for each row:
//     void Splits_data() {
//         const Rows<qint64, int> row;
//         row("a minute", 60'000, 0);
//     }
//     void Splits() {
//         const auto [total, minutes] = Row<qint64, int>();
// Where the first value says it all, the rows are named after it:
//     void Splits_data() { Rows<qint64, int>({{60'000, 0}, {60'001, 1}}); }
template <class... Values>
class Rows {
  public:
    using Tuple = std::tuple<Values...>;

    Rows() { QTest::addColumn<Tuple>("row"); }
    explicit Rows(std::initializer_list<Tuple> rows) : Rows() {
        for (const Tuple& row : rows) {
            const std::unique_ptr<char[]> name(QTest::toString(std::get<0>(row)));
            QTest::newRow(name.get()) << row;
        }
    }
    void operator()(const char* name, const Values&... values) const {
        QTest::newRow(name) << Tuple(values...);
    }
};

// The row that the test runs with; the types are those of its table.
template <class... Values>
[[nodiscard]] std::tuple<Values...> Row() {
    using Tuple = std::tuple<Values...>;
    return *static_cast<const Tuple*>(QTest::qData("row", qMetaTypeId<Tuple>()));
}

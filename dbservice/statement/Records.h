#ifndef DBSERVICE_STATEMENT_RECORDS_H
#define DBSERVICE_STATEMENT_RECORDS_H

namespace dbservice::statement {

/// The records of an array argument, to loop over; none for a null array or a count below 1.
template <class Record>
class Records {
public:
    Records(const Record* records, int count)
        : begin_(records), end_(records != nullptr && count > 0 ? records + count : records) {}

    const Record* begin() const { return begin_; }
    const Record* end() const { return end_; }
    bool empty() const { return begin_ == end_; }

private:
    const Record* begin_;
    const Record* end_;
};

}  // namespace dbservice::statement

#endif

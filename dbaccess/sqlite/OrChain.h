#ifndef DBSERVICE_DBACCESS_SQLITE_ORCHAIN_H
#define DBSERVICE_DBACCESS_SQLITE_ORCHAIN_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace dbaccess::sqlite {

/// The OR terms of a where clause. To SQLite a chain is as deep as it has terms, and it refuses
/// what is more than 1000 deep: a long chain is put into parentheses, group by group.
class OrChain {
public:
    void begin(std::size_t position) {
        open_ = true;
        begin_ = position;
        ors_.clear();
    }

    /// Notes an OR whose two letters stand at the position.
    void add(std::size_t position) {
        if (open_) ors_.push_back(position);
    }

    /// Groups the terms of `text`, whose end is the end of the clause.
    void end(std::string& text) {
        if (open_ && ors_.size() >= kTermsPerGroup) group(text);
        open_ = false;
    }

private:
    static constexpr std::size_t kTermsPerGroup = 200;

    void group(std::string& text) const {
        std::string grouped(text, 0, begin_);
        grouped += '(';
        std::size_t copied = begin_;
        for (std::size_t i = kTermsPerGroup - 1; i < ors_.size(); i += kTermsPerGroup) {
            grouped.append(text, copied, ors_[i] - copied).append(")OR(");
            copied = ors_[i] + 2;
        }
        grouped.append(text, copied, std::string::npos).append(")");
        text = std::move(grouped);
    }

    bool open_ = false;
    std::size_t begin_ = 0;
    std::vector<std::size_t> ors_;
};

}  // namespace dbaccess::sqlite

#endif

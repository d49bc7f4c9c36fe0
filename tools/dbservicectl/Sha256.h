#ifndef DBSERVICECTL_SHA256_H
#define DBSERVICECTL_SHA256_H

#include <openssl/evp.h>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "schema/Tables.h"
#include "tools/dbservicectl/Output.h"

namespace dbservicectl {

/// The SHA-256 of what was added to it.
class Sha256 {
public:
    using Bytes = std::array<unsigned char, 32>;

    Sha256();
    void add(std::string_view bytes);
    /// Of all so far; more may be added afterwards.
    Bytes bytes() const;
    std::string text() const;  ///< 64 hexadecimal digits

private:
    struct Free {
        void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
    };
    std::unique_ptr<EVP_MD_CTX, Free> context_;
};

std::string hexOf(std::string_view bytes);

/// What tells whether two tables have the same rows: how many, and the sum of the SHA-256 of each,
/// so that the order in which an engine gives them does not matter. A NULL is another value than
/// an empty text.
class Digest {
public:
    void add(const std::vector<Cell>& row);
    std::uint64_t rows() const { return rows_; }
    std::string text() const;  ///< 64 hexadecimal digits

private:
    std::uint64_t rows_ = 0;
    std::array<std::uint64_t, 4> sum_{};
    std::string bytes_;  // of the row, kept for its memory
};

using Digests = std::map<const schema::Table*, Digest>;

}  // namespace dbservicectl

#endif

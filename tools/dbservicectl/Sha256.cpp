#include "tools/dbservicectl/Sha256.h"

#include <fmt/format.h>

#include <cstring>
#include <stdexcept>

namespace dbservicectl {
namespace {

void check(int result) {
    if (result != 1) throw std::runtime_error("SHA-256 is not to be had");
}

std::string_view viewOf(const Sha256::Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

Sha256::Sha256() : context_(EVP_MD_CTX_new()) {
    if (!context_) throw std::bad_alloc();
    check(EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr));
}

void Sha256::add(std::string_view bytes) {
    check(EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()));
}

Sha256::Bytes Sha256::bytes() const {
    const Sha256 soFar;
    Bytes result{};
    check(EVP_MD_CTX_copy_ex(soFar.context_.get(), context_.get()));
    check(EVP_DigestFinal_ex(soFar.context_.get(), result.data(), nullptr));
    return result;
}

std::string Sha256::text() const {
    return hexOf(viewOf(bytes()));
}

std::string hexOf(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes)
        text += fmt::format("{:02x}", static_cast<unsigned char>(byte));
    return text;
}

void Digest::add(const std::vector<Cell>& row) {
    bytes_.clear();
    for (const Cell& cell : row) {  // each with its length: where one ends is part of it
        const std::uint64_t length = cell ? cell->size() + 1 : 0;
        for (unsigned int shift = 0; shift < 64; shift += 8)
            bytes_ += static_cast<char>(length >> shift & 0xFFU);
        if (cell) bytes_ += *cell;
    }
    std::array<std::uint64_t, 4> lanes{};
    static_assert(sizeof lanes == sizeof(Sha256::Bytes));
    check(EVP_Digest(bytes_.data(), bytes_.size(), reinterpret_cast<unsigned char*>(lanes.data()),
                     nullptr, EVP_sha256(), nullptr));
    for (std::size_t i = 0; i < lanes.size(); ++i)
        sum_[i] += lanes[i];
    ++rows_;
}

std::string Digest::text() const {
    Sha256::Bytes bytes{};
    std::memcpy(bytes.data(), sum_.data(), bytes.size());
    return hexOf(viewOf(bytes));
}

}  // namespace dbservicectl

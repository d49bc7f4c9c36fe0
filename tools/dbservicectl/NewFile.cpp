#include "tools/dbservicectl/NewFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace dbservicectl {

NewFile::NewFile(std::string path, const Session& session)
    : path_(std::move(path)), temporary_(path_ + ".XXXXXX") {
    const auto status = std::filesystem::symlink_status(path_);
    if (std::filesystem::exists(status)) {
        if (!std::filesystem::is_regular_file(status))
            throw Failure(path_ + " is there already, and is no plain file");
        session.confirm(path_ + " is there already. Replace it?");
    }
    const int file = ::mkostemp(temporary_.data(), O_CLOEXEC);  // readable to this account alone
    if (file < 0) fail(errno);
    stream_ = ::fdopen(file, "wb");
    if (stream_ != nullptr) return;
    const int error = errno;
    ::close(file);
    ::unlink(temporary_.c_str());
    fail(error);
}

NewFile::~NewFile() {
    if (stream_ != nullptr) static_cast<void>(std::fclose(stream_));
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void NewFile::write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stream_) != text.size()) fail(errno);
}

void NewFile::publish() {
    if (std::fflush(stream_) != 0 || ::fsync(::fileno(stream_)) != 0) fail(errno);
    if (std::fclose(std::exchange(stream_, nullptr)) != 0) fail(errno);
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) fail(errno);
    temporary_.clear();
    syncDirectory();
}

/// The name is on the disk as well then.
void NewFile::syncDirectory() const {
    const std::string directory = std::filesystem::absolute(path_).parent_path();
    const int opened = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool synced = opened >= 0 && ::fsync(opened) == 0;
    const int error = errno;
    if (opened >= 0) ::close(opened);
    if (!synced) fail(error);
}

void NewFile::fail(int error) const {
    throw Failure("writing " + path_ + ": " + std::generic_category().message(error));
}

}  // namespace dbservicectl

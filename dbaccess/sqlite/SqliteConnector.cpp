#include "dbaccess/sqlite/SqliteConnector.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/sqlite/SqliteConnection.h"

namespace dbaccess::sqlite {
namespace {

/// 0, or the errno that says why no file of the directory can be reached.
int checkDirectory(const std::string& directory) {
    struct stat status {};
    if (::stat(directory.c_str(), &status) != 0) return errno;
    if (!S_ISDIR(status.st_mode)) return ENOTDIR;
    return ::access(directory.c_str(), X_OK) == 0 ? 0 : errno;
}

class SqliteConnector final : public Connector {
public:
    SqliteConnector(std::string directory, const Timeouts& timeouts)
        : directory_(std::move(directory)), timeouts_(timeouts) {}

    std::unique_ptr<Connection> connect(Error& error) override {
        const int failure = checkDirectory(directory_);
        if (failure != 0) {
            const std::error_code reason(failure, std::generic_category());
            error = makeError(kCannotConnect, "cannot use the database directory '" + directory_ +
                                                  "': " + reason.message());
            return nullptr;
        }
        return std::make_unique<SqliteConnection>(directory_, timeouts_);
    }

private:
    const std::string directory_;
    const Timeouts timeouts_;
};

}  // namespace

std::unique_ptr<Connector> makeConnector(std::string directory, const Timeouts& timeouts) {
    // Absolute, so that a program that changes its working directory keeps its databases.
    std::error_code failure;
    const std::filesystem::path absolute = std::filesystem::absolute(directory, failure);
    if (!failure) directory = absolute.string();
    return std::make_unique<SqliteConnector>(std::move(directory), timeouts);
}

}  // namespace dbaccess::sqlite

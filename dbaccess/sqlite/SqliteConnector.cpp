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
    SqliteConnector(std::string directory, const Settings& settings)
        : directory_(std::move(directory)), settings_(settings) {}

    std::unique_ptr<Connection> connect(TimePoint /*deadline*/, Error& error) override {
        const int failure = checkDirectory(directory_);
        if (failure != 0) {
            const std::error_code reason(failure, std::generic_category());
            error = makeError(kCannotConnect, "cannot use the database directory '" + directory_ +
                                                  "': " + reason.message());
            return nullptr;
        }
        return std::make_unique<SqliteConnection>(directory_, settings_);
    }

private:
    const std::string directory_;
    const Settings settings_;
};

}  // namespace

std::unique_ptr<Connector> makeConnector(std::string directory, const Settings& settings) {
    // Absolute, so that a program that changes its working directory keeps its databases.
    std::error_code failure;
    const std::filesystem::path absolute = std::filesystem::absolute(directory, failure);
    if (!failure) directory = absolute.string();
    return std::make_unique<SqliteConnector>(std::move(directory), settings);
}

}  // namespace dbaccess::sqlite

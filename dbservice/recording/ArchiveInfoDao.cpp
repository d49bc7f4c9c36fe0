#include "dbservice/recording/ArchiveInfoDao.h"

#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

ArchiveInfoDao::ArchiveInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ArchiveInfoDao::InsertArchiveInfoImp(const T_ArchiveInfo& archive) {
    std::string text = compose("insert into archiveInfo(Guid,ArchiveTime) values('{}', '{}');",
                               archive.Guid, archive.ArchiveTime);
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int ArchiveInfoDao::UpdateArchiveInfoImp(const T_ArchiveInfo& archive) {
    std::string text = compose("update archiveInfo set ArchiveTime = '{}' where Guid = '{}'",
                               archive.ArchiveTime, archive.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int ArchiveInfoDao::DeleteArchiveInfoImp(std::string guid) {
    return dataAccess_->Execute(dbName_, compose("delete from archiveInfo where Guid ='{}'", guid));
}

T_ArchiveInfoList* ArchiveInfoDao::QueryArchiveInfoImp(std::string guid) {
    std::string text = "select Guid,ArchiveTime from archiveInfo";
    if (!guid.empty()) append(text, " where Guid='{}'", guid);
    text += " order by ArchiveTime";
    return listOrNull<T_ArchiveInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int ArchiveInfoDao::SetValue(dbaccess::ResultSet* row, T_ArchiveInfo* archive) {
    const dbaccess::Field fields[] = {
        {"Guid", &archive->Guid},
        {"ArchiveTime", &archive->ArchiveTime},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void ArchiveInfoDao::ReleaseArchiveInfoList(T_ArchiveInfoList* list) {
    release(list);
}

}  // namespace dbservice

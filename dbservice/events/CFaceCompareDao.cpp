#include "dbservice/events/CFaceCompareDao.h"

#include "dbservice/events/TimeRange.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] = "basePath,facePath,similarity,addTime,faceID,name";

}  // namespace

CFaceCompareDao::CFaceCompareDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int CFaceCompareDao::insertFaceCompareImp(const T_FaceCompare& comparison) {
    std::string text =
        compose("insert into facecompare({}) values('{}', '{}', {},{},'{}', '{}');", kColumns,
                comparison.basePath, comparison.facePath, comparison.similarity, comparison.addTime,
                comparison.faceID, comparison.name);
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

T_FaceCompareList* CFaceCompareDao::queryFaceCompareImp(unsigned int beginTime,
                                                        unsigned int endTime) {
    std::string text = compose("select {} from facecompare{} order by addTime", kColumns,
                               events::between(beginTime, endTime));
    return listOrNull<T_FaceCompareList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int CFaceCompareDao::SetValue(dbaccess::ResultSet* row, T_FaceCompare* comparison) {
    const dbaccess::Field fields[] = {
        {"basePath", &comparison->basePath},     {"facePath", &comparison->facePath},
        {"similarity", &comparison->similarity}, {"addTime", &comparison->addTime},
        {"faceID", &comparison->faceID},         {"name", &comparison->name},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void CFaceCompareDao::releaseFaceCompareList(T_FaceCompareList* list) {
    release(list);
}

}  // namespace dbservice

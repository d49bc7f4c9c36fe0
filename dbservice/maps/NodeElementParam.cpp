#include "dbservice/maps/NodeElementParam.h"

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "Guid,UserGuid,NodeGuid,DeviceGuid,ChannelGuid,DisplayName,StreamType,DeviceType,VenderType";

void appendRow(std::string& rows, const T_NodeElementParam& element) {
    append(rows, "('{}', '{}', '{}', '{}', '{}', '{}', {}, {}, {})", element.Guid, element.UserGuid,
           element.NodeGuid, element.DeviceGuid, element.ChannelGuid, element.DisplayName,
           element.StreamType, element.DeviceType, element.VenderType);
}

std::string anyNode(const Records<T_NodeParam>& records) {
    return anyGivenKey(records, " NodeGuid='{}'", &T_NodeParam::NodeGuid);
}

std::string anyElement(const Records<T_NodeElementParam>& records) {
    return anyGivenKey(records, " Guid='{}'", &T_NodeElementParam::Guid);
}

}  // namespace

NodeElementParam::NodeElementParam(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int NodeElementParam::InsertNodeElementImp(const T_NodeElementParam* elements, int count) {
    const Records<T_NodeElementParam> records(elements, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("insert into nodeelement({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int NodeElementParam::UpdateNodeElementImp(const T_NodeElementParam* elements, int count) {
    const Records<T_NodeElementParam> records(elements, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("replace into nodeelement({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

// Without any key both deletes send the bare " where", deliberately: the database refuses it.

int NodeElementParam::DeleteNodeElementImp(const T_NodeParam* nodes, int count) {
    const Records<T_NodeParam> records(nodes, count);
    if (records.empty()) return noRecords();
    return dataAccess_->Execute(dbName_,
                                compose("delete from nodeelement where{}", anyNode(records)));
}

int NodeElementParam::DeleteNodeElementImp(const T_NodeElementParam* elements, int count) {
    const Records<T_NodeElementParam> records(elements, count);
    if (records.empty()) return noRecords();
    return dataAccess_->Execute(dbName_,
                                compose("delete from nodeelement where{}", anyElement(records)));
}

T_NodeElementList* NodeElementParam::QueryNodeElementImp(const T_NodeParam* nodes, int count) {
    std::string text = compose("select {} from nodeelement{} order by DisplayName", kColumns,
                               where(anyNode({nodes, count})));
    return listOrEmpty<T_NodeElementList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

T_NodeElementList* NodeElementParam::QueryNodeElementImp(const T_NodeElementParam* elements,
                                                         int count) {
    std::string text = compose("select {} from nodeelement{} order by DisplayName", kColumns,
                               where(anyElement({elements, count})));
    return listOrEmpty<T_NodeElementList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int NodeElementParam::SetValue(dbaccess::ResultSet* row, T_NodeElementParam* element) {
    const dbaccess::Field fields[] = {
        {"Guid", &element->Guid},
        {"UserGuid", &element->UserGuid},
        {"NodeGuid", &element->NodeGuid},
        {"DeviceGuid", &element->DeviceGuid},
        {"ChannelGuid", &element->ChannelGuid},
        {"DisplayName", &element->DisplayName},
        {"StreamType", &element->StreamType},
        {"DeviceType", &element->DeviceType},
        {"VenderType", &element->VenderType},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void NodeElementParam::ReleaseNodeElementList(T_NodeElementList* list) {
    release(list);
}

}  // namespace dbservice

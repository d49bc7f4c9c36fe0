#include "dbservice/maps/NodeInfo.h"

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] = "NodeGuid,ParentNodeGuid,ServerGuid,NodeName,NodeType";

void appendRow(std::string& rows, const T_NodeParam& node) {
    append(rows, "('{}', '{}', '{}', '{}', {})", node.NodeGuid, node.ParentNodeGuid,
           node.ServerGuid, node.NodeName, node.NodeType);
}

std::string anyNode(const Records<T_NodeParam>& records) {
    return anyGivenKey(records, " NodeGuid='{}'", &T_NodeParam::NodeGuid);
}

}  // namespace

NodeInfo::NodeInfo(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int NodeInfo::InsertNodeInfoImp(const T_NodeParam* nodes, int count) {
    const Records<T_NodeParam> records(nodes, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("insert into nodeinfo({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int NodeInfo::UpdateNodeInfoImp(const T_NodeParam* nodes, int count) {
    const Records<T_NodeParam> records(nodes, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("replace into nodeinfo({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

/// Without any key the bare " where" is sent, deliberately: the database refuses it.
int NodeInfo::DeleteNodeInfoImp(const T_NodeParam* nodes, int count) {
    const Records<T_NodeParam> records(nodes, count);
    if (records.empty()) return noRecords();
    return dataAccess_->Execute(dbName_, compose("delete from nodeinfo where{}", anyNode(records)));
}

T_NodeParamList* NodeInfo::QueryNodeInfoImp(const T_NodeParam* keys, int count) {
    std::string text = compose("select {} from nodeinfo{} order by NodeName", kColumns,
                               where(anyNode({keys, count})));
    return listOrEmpty<T_NodeParamList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int NodeInfo::SetValue(dbaccess::ResultSet* row, T_NodeParam* node) {
    const dbaccess::Field fields[] = {
        {"NodeGuid", &node->NodeGuid},     {"ParentNodeGuid", &node->ParentNodeGuid},
        {"ServerGuid", &node->ServerGuid}, {"NodeName", &node->NodeName},
        {"NodeType", &node->NodeType},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void NodeInfo::ReleaseNodeInfo(T_NodeParamList* list) {
    release(list);
}

}  // namespace dbservice

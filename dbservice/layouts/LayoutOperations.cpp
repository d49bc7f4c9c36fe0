#include "dbservice/DBService.h"
#include "dbservice/layouts/CarouselDao.h"
#include "dbservice/layouts/GroupInfoDao.h"
#include "dbservice/layouts/ViewGroupInfoDao.h"
#include "dbservice/layouts/ViewInfoDao.h"
#include "dbservice/layouts/ViewItemDao.h"
#include "dbservice/layouts/ViewItemInfoDao.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::noDao;

int DBService::InsertViewGroupInfo(const T_ViewGroupInfo& viewGroup) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->InsertViewGroupInfoImp(viewGroup) : noDao();
}

int DBService::InsertViewGroupInfo(const T_ViewGroupInfo* viewGroups, int count) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->InsertViewGroupInfoImp(viewGroups, count)
                             : noDao();
}

int DBService::UpdateViewGroupInfo(const T_ViewGroupInfo& viewGroup) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->UpdateViewGroupInfoImp(viewGroup) : noDao();
}

int DBService::DeleteViewGroupInfo(std::string guid, std::string userGuid) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->DeleteViewGroupInfoImp(guid, userGuid) : noDao();
}

T_ViewGroupInfoList* DBService::QueryViewGroupInfo(std::string guid, std::string userGuid,
                                                   bool includeType1) {
    return viewGroupInfoDao_
               ? viewGroupInfoDao_->QueryViewGroupInfoImp(guid, userGuid, includeType1)
               : noDao();
}

void DBService::ReleaseViewGroupInfoList(T_ViewGroupInfoList* list) {
    if (viewGroupInfoDao_) viewGroupInfoDao_->ReleaseViewGroupInfoList(list);
}

int DBService::InsertGroupInfo(const T_GroupInfo& group) {
    return groupInfoDao_ ? groupInfoDao_->InsertGroupInfoImp(group) : noDao();
}

int DBService::InsertGroupInfo(const T_GroupInfo* groups, int count) {
    return groupInfoDao_ ? groupInfoDao_->InsertGroupInfoImp(groups, count) : noDao();
}

int DBService::UpdateGroupInfo(const T_GroupInfo& group) {
    return groupInfoDao_ ? groupInfoDao_->UpdateGroupInfoImp(group) : noDao();
}

int DBService::DeleteGroupInfo(const std::string& viewGroupGuid) {
    return groupInfoDao_ ? groupInfoDao_->DeleteGroupInfoImp(viewGroupGuid) : noDao();
}

int DBService::DeleteGroupInfo(const T_GroupInfo* groups, int count) {
    return groupInfoDao_ ? groupInfoDao_->DeleteGroupInfoImp(groups, count) : noDao();
}

T_GroupInfoList* DBService::QueryGroupInfo(const std::string& viewGroupGuid) {
    return groupInfoDao_ ? groupInfoDao_->QueryGroupInfoImp(viewGroupGuid) : noDao();
}

void DBService::ReleaseGroupInfoList(T_GroupInfoList* list) {
    if (groupInfoDao_) groupInfoDao_->ReleaseGroupInfoList(list);
}

int DBService::InsertViewInfo1(const T_ViewInfo& view) {
    return viewInfoDao_ ? viewInfoDao_->InsertViewInfoImp(view) : noDao();
}

int DBService::InsertViewInfo(const T_ViewInfo* views, int count) {
    return viewInfoDao_ ? viewInfoDao_->InsertViewInfoImp(views, count) : noDao();
}

int DBService::UpdateViewInfo(const T_ViewInfo& view) {
    return viewInfoDao_ ? viewInfoDao_->UpdateViewInfoImp(view) : noDao();
}

int DBService::DeleteViewInfo(const std::string& groupGuid) {
    return viewInfoDao_ ? viewInfoDao_->DeleteViewInfoImp(groupGuid) : noDao();
}

int DBService::DeleteViewInfo(const T_ViewInfo* views, int count) {
    return viewInfoDao_ ? viewInfoDao_->DeleteViewInfoImp(views, count) : noDao();
}

T_ViewInfoList* DBService::QueryViewInfo(const std::string& groupGuid) {
    return viewInfoDao_ ? viewInfoDao_->QueryViewInfoImp(groupGuid) : noDao();
}

void DBService::ReleaseViewInfoList(T_ViewInfoList* list) {
    if (viewInfoDao_) viewInfoDao_->ReleaseViewInfoList(list);
}

int DBService::InsertViewItem(const T_ViewItem& item) {
    return viewItemDao_ ? viewItemDao_->InsertViewItemImp(item) : noDao();
}

int DBService::InsertViewItem(const T_ViewItem* items, int count) {
    return viewItemDao_ ? viewItemDao_->InsertViewItemImp(items, count) : noDao();
}

int DBService::UpdateViewItem(const T_ViewItem& item) {
    return viewItemDao_ ? viewItemDao_->UpdateViewItemImp(item) : noDao();
}

int DBService::DeleteViewItem(const std::string& viewInfoGuid) {
    return viewItemDao_ ? viewItemDao_->DeleteViewItemImp(viewInfoGuid) : noDao();
}

int DBService::DeleteViewItem(const T_ViewItem* items, int count) {
    return viewItemDao_ ? viewItemDao_->DeleteViewItemImp(items, count) : noDao();
}

T_ViewItemList* DBService::QueryViewItem(const std::string& viewInfoGuid) {
    return viewItemDao_ ? viewItemDao_->QueryViewItemImp(viewInfoGuid) : noDao();
}

void DBService::ReleaseViewItemList(T_ViewItemList* list) {
    if (viewItemDao_) viewItemDao_->ReleaseViewItemList(list);
}

int DBService::InsertViewItemInfo(const T_ViewItemInfo& source) {
    return viewItemInfoDao_ ? viewItemInfoDao_->InsertViewItemInfoImp(source) : noDao();
}

int DBService::InsertViewItemInfo(const T_ViewItemInfo* sources, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->InsertViewItemInfoImp(sources, count) : noDao();
}

int DBService::UpdateViewItemInfo(const T_ViewItemInfo& source) {
    return viewItemInfoDao_ ? viewItemInfoDao_->UpdateViewItemInfoImp(source) : noDao();
}

int DBService::DeleteViewItemInfo(const std::string& viewItemGuid) {
    return viewItemInfoDao_ ? viewItemInfoDao_->DeleteViewItemInfoImp(viewItemGuid) : noDao();
}

int DBService::DeleteViewItemInfo(const T_ViewItemInfo* sources, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->DeleteViewItemInfoImp(sources, count) : noDao();
}

T_ViewItemInfo* DBService::QueryViewItemInfo(const std::string& viewItemGuid) {
    return viewItemInfoDao_ ? viewItemInfoDao_->QueryViewItemInfoImp(viewItemGuid) : noDao();
}

T_ViewItemInfoList* DBService::QueryViewItemInfo(const T_ViewItem* items, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->QueryViewItemInfoImp(items, count) : noDao();
}

void DBService::ReleaseViewItemInfo(T_ViewItemInfo* source) {
    if (viewItemInfoDao_) viewItemInfoDao_->ReleaseViewItemInfo(source);
}

void DBService::ReleaseViewItemInfoList(T_ViewItemInfoList* list) {
    if (viewItemInfoDao_) viewItemInfoDao_->ReleaseViewItemInfoList(list);
}

int DBService::InsertCarousel(const T_CarouselInfo& entry) {
    return carouselDao_ ? carouselDao_->InsertCarouselImp(entry) : noDao();
}

int DBService::InsertCarousel(const T_CarouselInfo* entries, int count) {
    return carouselDao_ ? carouselDao_->InsertCarouselImp(entries, count) : noDao();
}

int DBService::UpdateCarousel(const T_CarouselInfo& entry) {
    return carouselDao_ ? carouselDao_->UpdateCarouselImp(entry) : noDao();
}

int DBService::DeleteCarousel(const std::string& itemInfoGuid) {
    return carouselDao_ ? carouselDao_->DeleteCarouselImp(itemInfoGuid) : noDao();
}

int DBService::DeleteCarousel(const T_CarouselInfo* entries, int count) {
    return carouselDao_ ? carouselDao_->DeleteCarouselImp(entries, count) : noDao();
}

T_CarouselInfoList* DBService::QueryCarousel(std::string itemInfoGuid) {
    return carouselDao_ ? carouselDao_->QueryCarouselImp(itemInfoGuid) : noDao();
}

T_CarouselInfoList* DBService::QueryCarousel(const T_ViewItemInfo* sources, int count) {
    return carouselDao_ ? carouselDao_->QueryCarouselImp(sources, count) : noDao();
}

void DBService::ReleaseCarouselList(T_CarouselInfoList* list) {
    if (carouselDao_) carouselDao_->ReleaseCarouselList(list);
}

}  // namespace dbservice

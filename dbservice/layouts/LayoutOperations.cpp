#include "dbservice/DBService.h"
#include "dbservice/layouts/CarouselDao.h"
#include "dbservice/layouts/GroupInfoDao.h"
#include "dbservice/layouts/ViewGroupInfoDao.h"
#include "dbservice/layouts/ViewInfoDao.h"
#include "dbservice/layouts/ViewItemDao.h"
#include "dbservice/layouts/ViewItemInfoDao.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::kNoDao;

int DBService::InsertViewGroupInfo(const T_ViewGroupInfo& viewGroup) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->InsertViewGroupInfoImp(viewGroup) : kNoDao;
}

int DBService::InsertViewGroupInfo(const T_ViewGroupInfo* viewGroups, int count) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->InsertViewGroupInfoImp(viewGroups, count)
                             : kNoDao;
}

int DBService::UpdateViewGroupInfo(const T_ViewGroupInfo& viewGroup) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->UpdateViewGroupInfoImp(viewGroup) : kNoDao;
}

int DBService::DeleteViewGroupInfo(std::string guid, std::string userGuid) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->DeleteViewGroupInfoImp(guid, userGuid) : kNoDao;
}

T_ViewGroupInfoList* DBService::QueryViewGroupInfo(std::string guid, std::string userGuid,
                                                   bool includeType1) {
    return viewGroupInfoDao_
               ? viewGroupInfoDao_->QueryViewGroupInfoImp(guid, userGuid, includeType1)
               : nullptr;
}

void DBService::ReleaseViewGroupInfoList(T_ViewGroupInfoList* list) {
    if (viewGroupInfoDao_) viewGroupInfoDao_->ReleaseViewGroupInfoList(list);
}

int DBService::InsertGroupInfo(const T_GroupInfo& group) {
    return groupInfoDao_ ? groupInfoDao_->InsertGroupInfoImp(group) : kNoDao;
}

int DBService::InsertGroupInfo(const T_GroupInfo* groups, int count) {
    return groupInfoDao_ ? groupInfoDao_->InsertGroupInfoImp(groups, count) : kNoDao;
}

int DBService::UpdateGroupInfo(const T_GroupInfo& group) {
    return groupInfoDao_ ? groupInfoDao_->UpdateGroupInfoImp(group) : kNoDao;
}

int DBService::DeleteGroupInfo(const std::string& viewGroupGuid) {
    return groupInfoDao_ ? groupInfoDao_->DeleteGroupInfoImp(viewGroupGuid) : kNoDao;
}

int DBService::DeleteGroupInfo(const T_GroupInfo* groups, int count) {
    return groupInfoDao_ ? groupInfoDao_->DeleteGroupInfoImp(groups, count) : kNoDao;
}

T_GroupInfoList* DBService::QueryGroupInfo(const std::string& viewGroupGuid) {
    return groupInfoDao_ ? groupInfoDao_->QueryGroupInfoImp(viewGroupGuid) : nullptr;
}

void DBService::ReleaseGroupInfoList(T_GroupInfoList* list) {
    if (groupInfoDao_) groupInfoDao_->ReleaseGroupInfoList(list);
}

int DBService::InsertViewInfo1(const T_ViewInfo& view) {
    return viewInfoDao_ ? viewInfoDao_->InsertViewInfoImp(view) : kNoDao;
}

int DBService::InsertViewInfo(const T_ViewInfo* views, int count) {
    return viewInfoDao_ ? viewInfoDao_->InsertViewInfoImp(views, count) : kNoDao;
}

int DBService::UpdateViewInfo(const T_ViewInfo& view) {
    return viewInfoDao_ ? viewInfoDao_->UpdateViewInfoImp(view) : kNoDao;
}

int DBService::DeleteViewInfo(const std::string& groupGuid) {
    return viewInfoDao_ ? viewInfoDao_->DeleteViewInfoImp(groupGuid) : kNoDao;
}

int DBService::DeleteViewInfo(const T_ViewInfo* views, int count) {
    return viewInfoDao_ ? viewInfoDao_->DeleteViewInfoImp(views, count) : kNoDao;
}

T_ViewInfoList* DBService::QueryViewInfo(const std::string& groupGuid) {
    return viewInfoDao_ ? viewInfoDao_->QueryViewInfoImp(groupGuid) : nullptr;
}

void DBService::ReleaseViewInfoList(T_ViewInfoList* list) {
    if (viewInfoDao_) viewInfoDao_->ReleaseViewInfoList(list);
}

int DBService::InsertViewItem(const T_ViewItem& item) {
    return viewItemDao_ ? viewItemDao_->InsertViewItemImp(item) : kNoDao;
}

int DBService::InsertViewItem(const T_ViewItem* items, int count) {
    return viewItemDao_ ? viewItemDao_->InsertViewItemImp(items, count) : kNoDao;
}

int DBService::UpdateViewItem(const T_ViewItem& item) {
    return viewItemDao_ ? viewItemDao_->UpdateViewItemImp(item) : kNoDao;
}

int DBService::DeleteViewItem(const std::string& viewInfoGuid) {
    return viewItemDao_ ? viewItemDao_->DeleteViewItemImp(viewInfoGuid) : kNoDao;
}

int DBService::DeleteViewItem(const T_ViewItem* items, int count) {
    return viewItemDao_ ? viewItemDao_->DeleteViewItemImp(items, count) : kNoDao;
}

T_ViewItemList* DBService::QueryViewItem(const std::string& viewInfoGuid) {
    return viewItemDao_ ? viewItemDao_->QueryViewItemImp(viewInfoGuid) : nullptr;
}

void DBService::ReleaseViewItemList(T_ViewItemList* list) {
    if (viewItemDao_) viewItemDao_->ReleaseViewItemList(list);
}

int DBService::InsertViewItemInfo(const T_ViewItemInfo& source) {
    return viewItemInfoDao_ ? viewItemInfoDao_->InsertViewItemInfoImp(source) : kNoDao;
}

int DBService::InsertViewItemInfo(const T_ViewItemInfo* sources, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->InsertViewItemInfoImp(sources, count) : kNoDao;
}

int DBService::UpdateViewItemInfo(const T_ViewItemInfo& source) {
    return viewItemInfoDao_ ? viewItemInfoDao_->UpdateViewItemInfoImp(source) : kNoDao;
}

int DBService::DeleteViewItemInfo(const std::string& viewItemGuid) {
    return viewItemInfoDao_ ? viewItemInfoDao_->DeleteViewItemInfoImp(viewItemGuid) : kNoDao;
}

int DBService::DeleteViewItemInfo(const T_ViewItemInfo* sources, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->DeleteViewItemInfoImp(sources, count) : kNoDao;
}

T_ViewItemInfo* DBService::QueryViewItemInfo(const std::string& viewItemGuid) {
    return viewItemInfoDao_ ? viewItemInfoDao_->QueryViewItemInfoImp(viewItemGuid) : nullptr;
}

T_ViewItemInfoList* DBService::QueryViewItemInfo(const T_ViewItem* items, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->QueryViewItemInfoImp(items, count) : nullptr;
}

void DBService::ReleaseViewItemInfo(T_ViewItemInfo* source) {
    if (viewItemInfoDao_) viewItemInfoDao_->ReleaseViewItemInfo(source);
}

void DBService::ReleaseViewItemInfoList(T_ViewItemInfoList* list) {
    if (viewItemInfoDao_) viewItemInfoDao_->ReleaseViewItemInfoList(list);
}

int DBService::InsertCarousel(const T_CarouselInfo& entry) {
    return carouselDao_ ? carouselDao_->InsertCarouselImp(entry) : kNoDao;
}

int DBService::InsertCarousel(const T_CarouselInfo* entries, int count) {
    return carouselDao_ ? carouselDao_->InsertCarouselImp(entries, count) : kNoDao;
}

int DBService::UpdateCarousel(const T_CarouselInfo& entry) {
    return carouselDao_ ? carouselDao_->UpdateCarouselImp(entry) : kNoDao;
}

int DBService::DeleteCarousel(const std::string& itemInfoGuid) {
    return carouselDao_ ? carouselDao_->DeleteCarouselImp(itemInfoGuid) : kNoDao;
}

int DBService::DeleteCarousel(const T_CarouselInfo* entries, int count) {
    return carouselDao_ ? carouselDao_->DeleteCarouselImp(entries, count) : kNoDao;
}

T_CarouselInfoList* DBService::QueryCarousel(std::string itemInfoGuid) {
    return carouselDao_ ? carouselDao_->QueryCarouselImp(itemInfoGuid) : nullptr;
}

T_CarouselInfoList* DBService::QueryCarousel(const T_ViewItemInfo* sources, int count) {
    return carouselDao_ ? carouselDao_->QueryCarouselImp(sources, count) : nullptr;
}

void DBService::ReleaseCarouselList(T_CarouselInfoList* list) {
    if (carouselDao_) carouselDao_->ReleaseCarouselList(list);
}

}  // namespace dbservice

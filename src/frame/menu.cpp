#include "frame/menu.h"

#include <algorithm>

namespace quilla {

const std::vector<MenuEntry>& mainMenu()
{
    using enum Opening;
    const auto action = [](QStringView name) { return name.toString(); };
    static const QString classes = u"《中图法》简表"_s;
    static const QString basics = u"基本资料（&M）"_s;
    static const QString circulation = u"流通操作（&B）"_s;
    static const QString statistics = u"统计报表（&T）"_s;
    static const QString search = u"图书资料查询（&S）"_s;
    static const QString administration = u"系统管理（&X）"_s;
    static const std::vector<MenuEntry> entries {
        {classes, u"中图法简表"_s, u"fenleihelp"_s, Plain, {}, {}},
        {basics, u"读者类型定义"_s, u"MadddzlxFrm"_s, Modal, u"0"_s, {}},
        {basics, u"读者单位定义"_s, u"MadddzlxFrm"_s, Plain, u"1"_s, {}},
        {basics, u"假期设定"_s, u"holidayfrm"_s, Plain, {}, {}},
        {basics, u"流通参数设置"_s, u"JycsFrm"_s, Plain, {}, {}},
        {circulation, u"图书借还"_s, u"TsjhFrm"_s, Owned, {}, {}},
        {circulation, u"图书预约"_s, u"frmTushuYuYue"_s, Owned, {}, {}},
        {circulation, u"查看预约信息"_s, u"frmTuShuYuyueList"_s, Owned, {}, {}},
        {circulation, u"打印预约图书回库通知单"_s, action(MenuAction::ReturnNotices), Action, {}, {}},
        {circulation, u"清除过期的预约"_s, action(MenuAction::ClearReservations), Action, {}, {}},
        {circulation, u"读者管理"_s, u"DzglFrm"_s, Plain, {}, {}},
        {circulation, u"流通统计"_s, u"LttjFrm"_s, Plain, {}, {}},
        {circulation, u"注销登记"_s, u"BookOutFrm"_s, Plain, {}, u"mnuBookOut"_s},
        {circulation, u"罚款管理"_s, u"FKmangerFrm"_s, Modal, u"A"_s, {}},
        {circulation, u"超期管理"_s, u"ChaoQifrm"_s, Plain, {}, {}},
        {circulation, u"丢失管理"_s, u"lostMangerfrm"_s, Plain, {}, {}},
        {statistics, u"流通量统计"_s, u"LtCountFrm"_s, Plain, {}, u"mnuTj"_s},
        {statistics, u"超期统计"_s, u"CqTjFrm"_s, Plain, {}, u"mnuCqTj"_s},
        {statistics, u"罚款统计"_s, u"FkTjFrm"_s, Plain, {}, u"mnuFkTj"_s},
        {statistics, u"借阅历史统计"_s, u"JylsQueryFrm"_s, Owned, {}, {}},
        {statistics, u"图书借阅排行榜"_s, u"frmtsjh"_s, Owned, {}, {}},
        {statistics, u"读者借阅排行榜"_s, u"dzjyphbFrm"_s, Owned, {}, {}},
        {statistics, u"月流通工作量统计"_s, u"frmYueLiuTongtj"_s, Owned, {}, {}},
        {statistics, u"月图书借出分类统计"_s, u"frmJieYueFltj"_s, Owned, {}, {}},
        {statistics, u"月读者借阅统计"_s, u"frmYueDuzheJieYuetj"_s, Owned, {}, {}},
        {statistics, u"年流通工作量统计"_s, u"frmNianLiuTongTj"_s, Owned, {}, {}},
        {statistics, u"年图书借出分类统计"_s, u"frmNianJieYueTj"_s, Owned, {}, {}},
        {statistics, u"年读者借阅统计"_s, u"frmndzjytj"_s, Owned, {}, {}},
        {search, u"图书资料查询"_s, u"frmFindBook"_s, Owned, {}, {}},
        {search, u"好书推荐"_s, u"frmGoodBook"_s, Owned, {}, {}},
        {administration, u"修改口令"_s, u"EditPassFrm"_s, Owned, {}, {}},
        {administration, u"打印机设置"_s, action(MenuAction::PrinterSetup), Action, {}, {}},
        {administration, u"区域设置"_s, action(MenuAction::RegionalSettings), Action, {}, {}},
        {administration, u"关于系统"_s, u"AboutFrm"_s, Plain, {}, {}},
        {u"退出系统（&Q）"_s, {}, action(MenuAction::Quit), Action, {}, {}},
    };
    return entries;
}

const std::vector<ToolEntry>& toolbar()
{
    static const std::vector<ToolEntry> entries {
        {u"JHBook"_s, u"图书借还"_s},
        {u"Reader"_s, u"读者管理"_s},
        {u"Tj"_s, u"流通统计"_s},
        {u"Fkcl"_s, u"罚款管理"_s},
        {u"BookOut"_s, u"注销登记"_s},
        {u"Jycs"_s, u"流通参数设置"_s},
        {u"Password"_s, u"修改口令"_s},
        {u"Quit"_s, u"退出系统"_s},
    };
    return entries;
}

const MenuEntry* menuEntry(QStringView item)
{
    const auto& entries = mainMenu();
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const MenuEntry& entry) {
        const bool actsItself = entry.item.isEmpty() && entry.menu.startsWith(item);
        return entry.item == item || actsItself;
    });
    return found == entries.end() ? nullptr : &*found;
}

} // namespace quilla

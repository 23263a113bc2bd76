#include "setup/welcome_page.h"

#include "platform/ui/look/theme.h"
#include "setup/demo_ops.h"
#include "setup/stored_connection_ops.h"

namespace quilla {

WelcomePage::WelcomePage(SetupPlace& place, SetupPlan& plan)
    : SetupPage(u"流通台打开哪个图书馆？"_s, place, plan)
{
    QUILLA_NAMES(Option1, labNow);
    setCaptions(Option1,
        {u"&1 试用演示图书馆"_s, u"&2 建立新的图书馆"_s, u"&3 打开已有的数据库文件"_s,
            u"&4 连接数据库服务器"_s, u"&5 恢复备份，或者换备份的文件夹"_s});
    layOut();
    for (QRadioButton& option : Option1)
        onEnter(option, [this] { goOn(); });
    Option1[0].setChecked(true);
}

void WelcomePage::layOut()
{
    labNow.setWordWrap(true);
    setTone(labNow, Tone::Faded);
    const auto below = [](const QString& text) { return row(room(26), note(text).grow()); };
    build(*this,
        column(Option1[0],
            below(u"几千册图书、几百位读者和三年的借还记录，可以放心试用，与真实的数据无关。"_s), room(8),
            Option1[1], below(u"从空的开始，保存在本机的一个文件里；可以接着导入图书和读者。"_s), room(8),
            Option1[2], below(u"本程序以前建立的、或者从备份恢复的图书馆文件。"_s), room(8), Option1[3],
            below(
                u"几台工作台共用一个图书馆：PostgreSQL、SQL Server 或 ODBC 数据源；服务器上的数据库是空的，也可以在里面建立。"_s),
            room(8), Option1[4], below(u"流通台每天第一次启动时备份它的图书馆文件。"_s), stretch(), labNow));
}

void WelcomePage::open()
{
    const QString now = storedPlace(m_place.settings);
    labNow.setText(now.isEmpty() ? u"现在还没有设置。"_s
                                 : u"现在打开的是："_s + now + u"。到最后一页按“开始”以前不会改变。"_s);
    Option1[int(m_plan.way)].setFocus();
}

void WelcomePage::goOn()
{
    for (int way = 0; way < int(std::size(Option1)); ++way)
        if (Option1[way].isChecked()) m_plan.way = SetupWay(way);
    if (m_plan.way == SetupWay::Demo) m_plan.target = demoTarget();
    m_plan.found = {};
    m_plan.emptyServer = false;
    m_plan.backup.clear();
    m_plan.backupFolder.clear();
    Q_EMIT passed();
}

} // namespace quilla

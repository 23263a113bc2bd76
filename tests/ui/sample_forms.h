#pragma once

#include "platform/ui/date_range.h"
#include "platform/ui/form.h"
#include "platform/ui/list_screen.h"
#include "platform/ui/text_box.h"
#include "platform/ui/theme.h"

#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QTabWidget>

namespace quilla::sample {

/// A record editor in the vocabulary, with every kind of control.
class CardForm : public QDialog {
public:
    CardForm()
        : cmdAdd(u"&A 保存增加"_s)
        , CmdSave(u"保 存(&S)"_s)
        , cmdQuit(u"&Q 关闭"_s)
        , Check1 {QCheckBox(u"有过期书刊时还可以借书"_s), QCheckBox(u"可以无证借书"_s)}
        , Frame2(u"流通参数信息---(下面参数的修改只影响该读者)"_s)
    {
        setObjectName(u"CardForm"_s);
        setWindowTitle(u"新增读者信息"_s);
        QUILLA_NAMES(Text1, Combo1, Check1, cmdAdd, CmdSave, cmdQuit);
        Combo1[0].addItems({u"男"_s, u"女"_s});
        Combo1[1].addItems({u"教师"_s, u"学生"_s});
        Combo1[1].setEditable(true);
        Text1[6].setHighlighted(true);
        build(*this,
            column(fields(3,
                       {{u"读者证号"_s, Text1[0]}, {u"姓名"_s, Text1[1]}, {u"性别(&X)"_s, Combo1[0]},
                           {u"读者类型"_s, Combo1[1]}, {u"办证日期"_s, Text1[4]}, {u"有效期限"_s, Text1[5]}}),
                group(Frame2,
                    column(fields(2,
                               {{u"可借天数(天)"_s, Text1[8]}, {u"可借册数(册)"_s, Text1[2]},
                                   {u"超期罚款(元/天)"_s, Text1[9]}, {u"污损罚款(倍)"_s, Text1[10]}}),
                        row(Check1[0], Check1[1], stretch()))),
                fields(1, {{u"备注"_s, Text1[6]}}), stretch(), row(stretch(), cmdAdd, CmdSave, cmdQuit)));
        enterAsTab(allOf(Text1));
        enterAsTab(allOf(Combo1));
        enterAsTab(allOf(Check1));
        onClick(cmdQuit, [this] { close(); });
    }

    TextBox Text1[12];
    QComboBox Combo1[2];
    QPushButton cmdAdd;
    QPushButton CmdSave;
    QPushButton cmdQuit;
    QCheckBox Check1[2];
    QGroupBox Frame2;
};

/// A list screen with the width rule of the overdue list.
class OverdueList : public ListScreen {
public:
    OverdueList()
        : ListScreen(u"OverdueList"_s, u"超期书刊管理"_s, overdueWidths())
    {
        QUILLA_NAMES(Command1);
        setCaptions(
            Command1, {u"&S 简单排序"_s, u"&P 打印"_s, u"&X 关闭"_s, u"&F 查找"_s, u"&E 输出到excel"_s});
        arrange({Command1[0], Command1[1], Command1[3], Command1[4], Command1[2]});
        Grid1.setUp(2, Format);
        gridFix();
    }

    void show(int lines)
    {
        {
            const GridModel::Filling filling(Grid1.cells());
            for (int i = 0; i < lines; ++i)
                Grid1.cells().addRow({u"B%1"_s.arg(100200 + i), Titles[i % 4], u"计算机科学与技术学院"_s,
                    u"%1"_s.arg(20040001 + i), Names[i % 3], u"2004-02-11"_s, u"2004-03-12"_s,
                    QString::number(i * 7 % 61)});
        }
        lCounts.setText(u"记录数：%1"_s.arg(lines));
        gridFix();
        Grid1.setRow(3);
    }

    QPushButton Command1[5];

private:
    static inline const QString Format
        = u"^条形码|<书     名|^读者单位|^读者证号|^读者姓名|^借书日期|^应还日期|>超期天数"_s;
    static inline const QStringList Titles {
        u"红楼梦"_s, u"数据结构与算法分析（第二版）"_s, u"The C++ Programming Language"_s, u"中国通史"_s};
    static inline const QStringList Names {u"张三"_s, u"欧阳修远"_s, u"李四"_s};
};

/// A desk of two pages: labels with boxes, a tinted result line, a grid of blank lines.
class DeskForm : public QWidget {
public:
    DeskForm()
        : TxtReaderCode(u"R2004001"_s)
        , Label1(u"输入读者证号："_s)
        , Label2(u"输入图书条码号："_s)
        , tMsg(u"借书成功"_s)
        , Check1(u"续 借(&A)"_s)
        , dates(u"统计日期范围"_s, DateRange::Filling::Kept, [] { return QDateTime::currentDateTime(); })
        , cmdQuit(u"&E 安全退出"_s)
    {
        setObjectName(u"DeskForm"_s);
        setWindowTitle(u"图书借还"_s);
        QUILLA_NAMES(
            SSTab1, TxtReaderCode, TxtBarCode, Label1, Label2, tMsg, Grid1, MSHFlexGrid1, Check1, cmdQuit);
        setTone(tMsg, Tone::Ok);
        build(*this,
            column(row(stretch(), cmdQuit),
                Piece(tabs(SSTab1,
                          {{u"借  书"_s,
                               column(row(Label1, TxtReaderCode, Label2, TxtBarCode),
                                   group(u"借书信息"_s, Grid1))},
                              {u"还书、续借"_s, column(row(Check1, stretch()), dates, MSHFlexGrid1)}}))
                    .grow(),
                tMsg));
        Grid1.setUp(8,
            u"^借书控制号|^图书条形码     |<书名                  |<著者    |<借书日期  |<应还日期  |^操作员"_s,
            {850, 1100, 2000, 1100, 1000, 1000, 900});
        MSHFlexGrid1.setUp(
            5, u"^|^标志  |^图书条码         |^借书证    |^借阅日期     |^还书日期     |^操作员   "_s);
        dates.Check1.setChecked(true);
        resize(pixelsOf(11000, *this), pixelsOf(6500, *this));
    }

    QTabWidget SSTab1;
    TextBox TxtReaderCode;
    TextBox TxtBarCode;
    QLabel Label1;
    QLabel Label2;
    QLabel tMsg;
    FlexGrid Grid1;
    FlexGrid MSHFlexGrid1;
    QCheckBox Check1;
    DateRange dates;
    QPushButton cmdQuit;
};

} // namespace quilla::sample

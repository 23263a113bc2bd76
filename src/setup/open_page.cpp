#include "setup/open_page.h"

#include "platform/db/connection_text.h"
#include "platform/ui/form/file_dialog.h"
#include "platform/ui/look/theme.h"

#include <QFileInfo>

namespace quilla {

OpenPage::OpenPage(SetupPlace& place, SetupPlan& plan)
    : SetupPage(u"已有的数据库文件"_s, place, plan)
{
    QUILLA_NAMES(txtFile, cmdBrowse, labResult);
    labResult.setWordWrap(true);
    build(*this,
        column(fields(1, {{u"数据库文件(&F)："_s, row(Piece(txtFile).grow(), cmdBrowse)}}),
            note(u"按“下一步”先核对文件。较早版本的图书馆会在最后一页升级，升级前保存副本。"_s), room(8),
            labResult, stretch()));
    onEnter(txtFile, [this] { goOn(); });
    onClick(cmdBrowse, [this] { browse(); });
}

void OpenPage::open()
{
    if (txtFile.text().isEmpty() && QFileInfo::exists(embeddedDatabaseFile()))
        txtFile.setText(embeddedDatabaseFile());
    labResult.clear();
    txtFile.setFocus();
}

void OpenPage::browse()
{
    const QString file = FileDialog(this, u"数据库文件"_s, u"数据库文件 (*.db);;所有文件 (*)"_s).openFile();
    if (!file.isEmpty()) txtFile.setText(file);
    txtFile.setFocus();
}

void OpenPage::goOn()
{
    const QString file = txtFile.text();
    if (const auto refusal = checkLibraryPath(file)) {
        tell(m_place.prompt, *refusal);
        return txtFile.setFocus();
    }
    setTone(labResult, Tone::Plain);
    labResult.setText(u"正在核对文件……"_s);
    const auto found = std::make_shared<FoundLibrary>();
    workOn([file, found](StagedProgress&) { *found = lookAtLibraryFile(file); },
        [this, found](const QString& failure) { take(failure, *found); });
}

void OpenPage::stop()
{
    SetupPage::stop();
    labResult.clear();
    txtFile.setFocus();
}

void OpenPage::take(const QString& failure, const FoundLibrary& found)
{
    if (!failure.isEmpty()) {
        setTone(labResult, Tone::Error);
        labResult.setText(failure);
        labResult.announce(failure);
        return txtFile.setFocus();
    }
    m_plan.target = fileTarget(txtFile.text());
    m_plan.found = found;
    Q_EMIT passed();
}

} // namespace quilla

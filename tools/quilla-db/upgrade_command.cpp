#include "quilla-db/upgrade_command.h"

#include "database/library_schema.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/server_schema.h"

namespace quilla {

namespace {

/// Nobody can end the command but by ending the process, which leaves the library as it was.
class ProgressLines final : public Progress {
public:
    explicit ProgressLines(QTextStream& out)
        : m_out(out)
    {
    }
    void begin() override { tell(u"正在升级……"_s); }
    void setTotal(qsizetype steps) override { m_total = steps; }
    void setDone(qsizetype steps) override { tell(u"%1/%2"_s.arg(steps).arg(m_total)); }
    bool goOn() override { return true; }
    void end() override { }

private:
    void tell(const QString& line)
    {
        m_out << line << u'\n';
        m_out.flush();
    }

    QTextStream& m_out;
    qsizetype m_total = 0;
};

} // namespace

Outcome upgrade(const Arguments& arguments, QTextStream& out)
{
    const Target& target = arguments.target;
    ProgressLines progress(out);
    const Upgrade upgraded = target.file
        ? upgradeEmbedded(*target.file, librarySchema(), progress)
        : Upgrade {upgradeServer(ConnectionItems(target.connectionText), librarySchema()), {}};
    if (!upgraded.copy.isEmpty()) out << u"升级前的数据库保存在："_s << upgraded.copy << u'\n';
    out << (upgraded.done ? u"已升级："_s : u"不需要升级："_s) << target.name() << u'\n';
    return Outcome::Done;
}

} // namespace quilla

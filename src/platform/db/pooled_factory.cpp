#include "platform/db/pooled_factory.h"

#include "platform/core/text.h"
#include "platform/db/open_driver.h"
#include "platform/db/pool.h"

#include <QHash>

namespace quilla {

struct PooledFactory::Private {
    Private(const sql::Schema& schema_, const Clock& clock_)
        : schema(schema_)
        , clock(clock_)
        , context {[this](sql::Engine engine) -> sql::Translator& { return translatorOf(engine); }, {}, {}}
    {
    }

    Pool& poolOf(const QString& connectionText);
    sql::Translator& translatorOf(sql::Engine engine);

    const sql::Schema& schema;
    const Clock& clock;
    PoolContext context;
    std::array<std::unique_ptr<sql::Translator>, 3> translators; ///< by engine, made when needed
    QHash<QString, std::shared_ptr<Pool>> pools; ///< by connection text
    QString lastText; ///< nearly every opening is for the same text as the one before
    Pool* lastPool = nullptr;
};

Pool& PooledFactory::Private::poolOf(const QString& connectionText)
{
    if (lastPool && lastText == connectionText) return *lastPool;
    auto& pool = pools[connectionText];
    if (!pool)
        pool = std::make_shared<Pool>(
            [this, connectionText] { return openDriver(ConnectionItems(connectionText), clock); }, context);
    lastText = connectionText;
    lastPool = pool.get();
    return *pool;
}

sql::Translator& PooledFactory::Private::translatorOf(sql::Engine engine)
{
    auto& translator = translators[std::size_t(engine)];
    if (!translator) translator = std::make_unique<sql::Translator>(engine, schema);
    return *translator;
}

PooledFactory::PooledFactory(const sql::Schema& schema, const Clock& clock)
    : d(std::make_unique<Private>(schema, clock))
{
}

PooledFactory::~PooledFactory() = default;

Connection PooledFactory::open(const QString& connectionText)
{
    return Connection(d->poolOf(connectionText).lend());
}

void PooledFactory::setHook(StatementHook hook)
{
    d->context.hook = std::move(hook);
}

void PooledFactory::setProcedures(ProcedureRunner procedures)
{
    d->context.procedures = std::move(procedures);
}

void PooledFactory::drain()
{
    for (const auto& pool : std::as_const(d->pools))
        pool->drain();
}

} // namespace quilla

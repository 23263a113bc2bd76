#include "platform/sql/translator.h"

#include "platform/sql/analyser.h"
#include "platform/sql/engine_printer.h"
#include "platform/sql/parser.h"
#include "platform/sql/postgres_printer.h"
#include "platform/sql/refusal.h"
#include "platform/sql/scan.h"
#include "platform/sql/server_text.h"

#include <algorithm>
#include <unordered_map>

namespace quilla::sql {

namespace {

/// One shape with certain texts of its pinned literals.
struct Variant {
    std::vector<QString> pinnedTexts;
    Translation translation;
};

struct Entry {
    std::vector<int> pinned;
    std::vector<std::unique_ptr<Variant>> variants;

    const Variant* find(const std::vector<Literal>& literals) const
    {
        for (const auto& variant : variants) {
            bool fits = true;
            for (std::size_t i = 0; fits && i < pinned.size(); ++i)
                fits = literals[pinned[i]].text == variant->pinnedTexts[i];
            if (fits) return variant.get();
        }
        return nullptr;
    }
};

struct KeyHash {
    using is_transparent = void;
    std::size_t operator()(QStringView key) const { return qHash(key); }
};

struct KeyEqual {
    using is_transparent = void;
    bool operator()(QStringView left, QStringView right) const { return left == right; }
};

using Cache = std::unordered_map<QString, Entry, KeyHash, KeyEqual>;

bool returnsRows(const Statement& statement)
{
    return std::holds_alternative<Query>(statement) || std::holds_alternative<Execute>(statement);
}

std::vector<Kind> kindsOf(const std::vector<Column>& columns)
{
    std::vector<Kind> kinds;
    for (const Column& column : columns)
        kinds.push_back(column.kind);
    return kinds;
}

std::vector<QString> namesOf(const std::vector<Column>& columns)
{
    std::vector<QString> names;
    for (const Column& column : columns)
        names.push_back(column.name);
    return names;
}

} // namespace

struct Translator::Private {
    Engine engine;
    const Schema& schema;
    std::unique_ptr<EnginePrinter> printer;
    std::size_t capacity;
    Shape shape;
    Cache young; ///< asked for since the last turn
    Cache old; ///< dropped at the next turn unless asked for until then
    std::size_t youngCount = 0; ///< translations in `young`
    int generation = 0;
    int nextId = 0;

    Entry& entryOf(QStringView key);
    const Translation& make(QStringView tsql, const std::vector<Literal>& literals);
    Translation translated(Parsed& parsed) const;
    void turn();
};

Translator::Translator(Engine engine, const Schema& schema, int capacity)
    : d(new Private {engine, schema, makePrinter(engine), std::size_t(std::max(1, capacity)), {}, {}, {}})
{
}

Translator::~Translator() = default;

Engine Translator::engine() const
{
    return d->engine;
}

int Translator::generation() const
{
    return d->generation;
}

std::vector<Translation> Translator::preparation()
{
    std::vector<Translation> statements;
    if (d->engine != Engine::Postgres) return statements;
    for (const QString& text : postgresPreparation(d->schema)) {
        Translation& statement = statements.emplace_back();
        statement.text = text.toUtf8();
        statement.writes = true;
        statement.id = d->nextId++;
    }
    return statements;
}

const Translation& Translator::translate(QStringView tsql, std::vector<Literal>& literals)
{
    try {
        d->shape.read(tsql, literals);
        const auto found = d->young.find(d->shape.key());
        if (found != d->young.end())
            if (const Variant* variant = found->second.find(literals)) return variant->translation;
        return d->make(tsql, literals);
    } catch (const Refusal& refusal) {
        throw errorOf(refusal, tsql);
    }
}

/// The entry of a shape among the young ones, brought back from the old ones or made anew.
Entry& Translator::Private::entryOf(QStringView key)
{
    const auto found = young.find(key);
    if (found != young.end()) return found->second;
    const auto aged = old.find(key);
    if (aged == old.end()) return young[key.toString()];
    youngCount += aged->second.variants.size();
    return young.insert(old.extract(aged)).position->second;
}

const Translation& Translator::Private::make(QStringView tsql, const std::vector<Literal>& literals)
{
    const auto aged = old.find(shape.key());
    if (aged != old.end())
        if (const Variant* variant = entryOf(shape.key()).find(literals)) return variant->translation;
    auto variant = std::make_unique<Variant>();
    std::vector<int> pinned;
    if (engine == Engine::SqlServer) {
        variant->translation = serverTranslation(tsql, literals, schema, pinned);
    } else {
        Parsed parsed = parse(tsql);
        variant->translation = translated(parsed);
        pinned = std::move(parsed.pinned);
    }
    if (youngCount >= capacity) turn();
    Entry& entry = entryOf(shape.key());
    entry.pinned = std::move(pinned);
    for (const int literal : entry.pinned)
        variant->pinnedTexts.push_back(literals[literal].text.toString());
    variant->translation.id = nextId++;
    ++youngCount;
    entry.variants.push_back(std::move(variant));
    return entry.variants.back()->translation;
}

Translation Translator::Private::translated(Parsed& parsed) const
{
    if (!printer) refuse(0, u"这种数据库的语法尚未支持"_s);
    Translation result;
    result.returnsRows = returnsRows(parsed.statement);
    result.writes = !result.returnsRows;
    const std::vector<Column> columns = Analyser(schema).run(parsed.statement);
    if (result.returnsRows) {
        result.columns = kindsOf(columns);
        result.names = namesOf(columns);
    }
    if (const auto* call = std::get_if<Execute>(&parsed.statement)) result.procedure = call->procedure;
    result.text = printer->print(parsed.statement, parsed.pinned).toUtf8();
    result.parameters = printer->parameters();
    return result;
}

void Translator::Private::turn()
{
    old = std::move(young);
    young.clear();
    youngCount = 0;
    ++generation;
}

} // namespace quilla::sql

#include "bench/recording.h"

#include "platform/db/literals.h"

namespace quilla {

namespace {

Argument argumentOf(const sql::Literal& literal, const sql::Parameter& parameter, const DeskTask& work)
{
    Argument argument {-1, parameter.kind, literal.text.toUtf8()};
    const auto part = std::find(work.texts.begin(), work.texts.end(), argument.text);
    if (part != work.texts.end() && !argument.text.isEmpty()) argument.part = int(part - work.texts.begin());
    if (parameter.kind == sql::Kind::Date) {
        const CanonicalMoment moment(momentOf(literal));
        argument.text = QByteArray(moment.text, qsizetype(moment.length));
    }
    argument.number = argument.text.toDouble();
    return argument;
}

Step stepOf(const QString& sent, sql::Translator& translator, const DeskTask& work)
{
    Step step;
    step.text = sent.toUtf8();
    if (step.isBegin() || step.isCommit()) return step;
    std::vector<sql::Literal> literals;
    const sql::Translation& translation = translator.translate(sent, literals);
    step.text = translation.text;
    for (const sql::Parameter& parameter : translation.parameters)
        step.arguments.push_back(argumentOf(literals[std::size_t(parameter.literal)], parameter, work));
    return step;
}

} // namespace

Recording record(PooledFactory& factory, sql::Translator& translator, const DeskTask& work,
    const std::function<void()>& operation)
{
    QStringList sent;
    factory.setHook([&sent](QStringView statement) { sent.append(statement.toString()); });
    operation();
    factory.setHook({});
    Recording recording;
    for (const QString& statement : std::as_const(sent))
        recording.push_back(stepOf(statement, translator, work));
    return recording;
}

} // namespace quilla

// Runs the product's pure rules over cases written as JSON, one a line.
//
//   vorq-conformance                reads cases on standard input, prints an outcome for each
//   vorq-conformance --check F...   compares the outcomes with those in the files

#include "conformance/Ops.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <cstdio>

namespace vorq::conformance {
namespace {

bool isSame(const QJsonValue& a, const QJsonValue& b);

bool isSameArray(const QJsonArray& a, const QJsonArray& b) {
    if (a.size() != b.size()) return false;
    for (qsizetype i = 0; i < a.size(); ++i)
        if (!isSame(a[i], b[i])) return false;
    return true;
}

bool isSameObject(const QJsonObject& a, const QJsonObject& b) {
    if (a.keys() != b.keys()) return false;
    const QStringList keys = a.keys();
    return std::ranges::all_of(keys, [&](const QString& key) { return isSame(a[key], b[key]); });
}

bool isSame(const QJsonValue& a, const QJsonValue& b) {
    if (a.type() != b.type()) return false;
    if (a.isDouble()) return std::abs(a.toDouble() - b.toDouble()) <= 1e-6;
    if (a.isArray()) return isSameArray(a.toArray(), b.toArray());
    if (a.isObject()) return isSameObject(a.toObject(), b.toObject());
    return a == b;
}

QByteArray written(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

// The id with an "out", or with an "error".
QJsonObject outcomeOf(const Ops& ops, const QByteArray& line) {
    QJsonObject outcome;
    QJsonParseError error;
    const QJsonObject testCase = QJsonDocument::fromJson(line, &error).object();
    outcome["id"] = testCase["id"];
    try {
        if (error.error != QJsonParseError::NoError)
            throw MalformedInput(error.errorString().toStdString());
        const QString name = testCase["op"].toString();
        const auto op = ops.find(name);
        if (op == ops.end()) throw MalformedInput("unknown op \"" + name.toStdString() + "\"");
        outcome["out"] = op->second(objectOf(testCase, "in"));
    } catch (const std::exception& problem) {
        outcome["error"] = QString::fromUtf8(problem.what());
    }
    return outcome;
}

int answerStandardInput(const Ops& ops) {
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly)) return 1;
    while (true) {
        const QByteArray line = input.readLine();
        if (line.isEmpty()) return 0;
        if (line.trimmed().isEmpty()) continue;
        std::printf("%s\n", written(outcomeOf(ops, line)).constData());
    }
}

struct Tally {
    int cases = 0;
    int differences = 0;
};

void checkFile(const Ops& ops, const QString& name, Tally& tally) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        std::printf("%s: %s\n", qPrintable(name), qPrintable(file.errorString()));
        ++tally.differences;
        return;
    }
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        if (line.trimmed().isEmpty()) continue;
        ++tally.cases;
        const QJsonObject outcome = outcomeOf(ops, line);
        const QJsonObject testCase = QJsonDocument::fromJson(line).object();
        if (!outcome.contains("error") && isSame(outcome["out"], testCase["out"])) continue;
        ++tally.differences;
        const QJsonObject expected{{"id", testCase["id"]}, {"out", testCase["out"]}};
        std::printf("expected %s\n     got %s\n", written(expected).constData(),
                    written(outcome).constData());
    }
}

int checkFiles(const Ops& ops, const QStringList& names) {
    Tally tally;
    for (const QString& name : names)
        checkFile(ops, name, tally);
    std::printf("%d cases, %d differ\n", tally.cases, tally.differences);
    return tally.differences == 0 && tally.cases > 0 ? 0 : 1;
}

} // namespace
} // namespace vorq::conformance

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    vorq::conformance::Ops ops;
    vorq::conformance::addReplyOps(ops);
    vorq::conformance::addCommandOps(ops);
    vorq::conformance::addBackendOps(ops);
    vorq::conformance::addCaptureOps(ops);
    vorq::conformance::addShellOps(ops);
    vorq::conformance::addLibraryOps(ops);
    vorq::conformance::addWritingOps(ops);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.isEmpty()) return vorq::conformance::answerStandardInput(ops);
    if (arguments.front() == u"--check")
        return vorq::conformance::checkFiles(ops, arguments.mid(1));
    std::fprintf(stderr, "Usage: vorq-conformance [--check FILE...]\n");
    return 2;
}

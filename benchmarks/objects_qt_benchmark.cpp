// The same call through Qt's metaobjects.

#include <QMetaMethod>
#include <QObject>
#include <benchmark/benchmark.h>

class QtCounter : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE void add(qint64 number) { mSum += number; }

private:
    qint64 mSum = 0;
};

namespace {

void invokeMethod(benchmark::State& state)
{
    QtCounter counter;
    const QMetaObject* type = counter.metaObject();
    const QMetaMethod method = type->method(type->indexOfMethod("add(qint64)"));
    qint64 number = 0;
    for (auto _ : state)
        method.invoke(&counter, Qt::DirectConnection, Q_ARG(qint64, ++number));
}
BENCHMARK(invokeMethod)->Name("DynamicSend/QMetaMethod/1");

}

#include "objects_qt_benchmark.moc"

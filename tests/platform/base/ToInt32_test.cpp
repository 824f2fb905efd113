#include "platform/base/ToInt32.h"

#include <QTest>
#include <QVariant>

#include <limits>

/// Tests toInt32(), which converts numbers from other programs.
class ToInt32Test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyKindOfNumberIsRead_data()
    {
        QTest::addColumn<QVariant>("number");
        QTest::newRow("boolean") << QVariant(true);
        QTest::newRow("byte") << QVariant::fromValue<uchar>(1);
        QTest::newRow("signed byte") << QVariant::fromValue<signed char>(1);
        QTest::newRow("short") << QVariant::fromValue<short>(1);
        QTest::newRow("unsigned short") << QVariant::fromValue<ushort>(1);
        QTest::newRow("int") << QVariant(1);
        QTest::newRow("unsigned") << QVariant(1U);
        QTest::newRow("long") << QVariant::fromValue(1L);
        QTest::newRow("unsigned long") << QVariant::fromValue(1UL);
        QTest::newRow("long long") << QVariant(1LL);
        QTest::newRow("unsigned long long") << QVariant(1ULL);
        QTest::newRow("float") << QVariant(1.0F);
        QTest::newRow("double") << QVariant(1.0);
    }
    void everyKindOfNumberIsRead()
    {
        QFETCH(QVariant, number);
        QCOMPARE(platform::toInt32(number), 1);
    }

    void integersAreCutTo32Bits_data()
    {
        QTest::addColumn<QVariant>("number");
        QTest::addColumn<int>("cut");
        QTest::newRow("row 4 in the lower half") << QVariant(0x1'0000'0004LL) << 4;
        QTest::newRow("negative in 32 bits") << QVariant(0xFFFF'FFF0U) << -16;
        QTest::newRow("no row") << QVariant(0x7FFF'FFFF'FFFF'FFFFULL) << -1;
        QTest::newRow("largest") << QVariant(std::numeric_limits<qulonglong>::max()) << -1;
        QTest::newRow("least") << QVariant(std::numeric_limits<qlonglong>::min()) << 0;
    }
    void integersAreCutTo32Bits()
    {
        QFETCH(QVariant, number);
        QTEST(platform::toInt32(number), "cut");
    }

    void realsAreTruncatedAndClamped_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<int>("cut");
        QTest::newRow("below the next") << 4.9 << 4;
        QTest::newRow("below zero") << -4.9 << -4;
        QTest::newRow("too large") << 1e300 << std::numeric_limits<int>::max();
        QTest::newRow("too small") << -1e300 << std::numeric_limits<int>::min();
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity()
                                  << std::numeric_limits<int>::max();
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 0;
    }
    void realsAreTruncatedAndClamped()
    {
        QFETCH(double, number);
        QTEST(platform::toInt32(number), "cut");
    }

    void otherTypesAreZero_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("nothing") << QVariant();
        QTest::newRow("text") << QVariant(QStringLiteral("4"));
        QTest::newRow("bytes") << QVariant(QByteArray("4"));
        QTest::newRow("list") << QVariant(QVariantList{4});
        QTest::newRow("dictionary") << QVariant(QVariantMap{{QStringLiteral("4"), 4}});
    }
    void otherTypesAreZero()
    {
        QFETCH(QVariant, value);
        QCOMPARE(platform::toInt32(value), 0);
    }

    void aMissingKeyIsZero()
    {
        const QVariantMap userInfo{{QStringLiteral("Value"), 7}};
        QCOMPARE(platform::toInt32(userInfo, QStringLiteral("Value")), 7);
        QCOMPARE(platform::toInt32(userInfo, QStringLiteral("Total")), 0);
    }
};

QTEST_GUILESS_MAIN(ToInt32Test)
#include "ToInt32_test.moc"

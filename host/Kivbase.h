#pragma once

#include "export/zel_host_export.h"

#include <QString>

/// The host's object for one fund in a quote. The package only fills its performance texts.
class ZEL_HOST_EXPORT TFundItem
{
public:
    explicit TFundItem(int fundID = -1); ///< The fund with that number, without texts.

    int FundID() const noexcept { return m_fundID; } ///< -1 for no fund.

    /// The name of the fund's benchmark ("ALSI").
    const QString &Benchmark() const noexcept { return m_benchmark; }
    void SetBenchmark(const QString &text) { m_benchmark = text; }
    /// The performance of the benchmark, as the text from the catalogue.
    const QString &BenchmarkPerf() const noexcept { return m_benchmarkPerf; }
    void SetBenchmarkPerf(const QString &text) { m_benchmarkPerf = text; }
    /// The lowest and highest performance fee, as the texts from the catalogue.
    const QString &MinPerfFee() const noexcept { return m_minPerfFee; }
    void SetMinPerfFee(const QString &text) { m_minPerfFee = text; }
    const QString &MaxPerfFee() const noexcept { return m_maxPerfFee; }
    void SetMaxPerfFee(const QString &text) { m_maxPerfFee = text; }

private:
    int m_fundID;
    QString m_benchmark;
    QString m_benchmarkPerf;
    QString m_minPerfFee;
    QString m_maxPerfFee;
};

#pragma once

#include "app/panelvalues.h"
#include "decay/normalization.h"
#include "tests/support/simulatedsession.h"

#include <QByteArray>

#include <array>
#include <cmath>
#include <random>
#include <string>

/// Decay sessions as chemists type them, drawn at random from a seed, for comparing large numbers of fits.
namespace support
{

inline constexpr std::array kDecayModels{1, 2, 3, 4, 6, 7, 8, 10, 11, 12, 13};

class RandomSessions
{
public:
    struct Session {
        TypedSheet sheet;
        int trueModel = 0; // of the sheet
        double K = 0, F = 0, kq1 = 0, kq2 = 0;
    };

    explicit RandomSessions(std::uint64_t seed) : m_random(seed) {}

    double uniform(double low, double high) { return std::uniform_real_distribution(low, high)(m_random); }
    double logUniform(double low, double high) { return std::exp(uniform(std::log(low), std::log(high))); }
    int whole(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }
    template <class List>
    auto oneOf(const List& list)
    {
        return list[static_cast<std::size_t>(whole(0, static_cast<int>(std::size(list)) - 1))];
    }
    std::string typed(double value, int digits) { return QByteArray::number(value, 'g', digits).toStdString(); }

    /// 4 to 12 samples of one mechanism. The most quenched sample loses between a quarter and five sixths of its
    /// emission. Every amplitude and lifetime has 0.1 to 3 % noise and two to four typed digits.
    Session session()
    {
        Session s;
        const decay::Reference reference = randomReference();
        const double strongest = logUniform(1e-3, 1); // quencher, M
        s.trueModel = oneOf(kDecayModels);
        s.K = logUniform(0.2, 3) / strongest;
        s.F = logUniform(0.2, 5);
        s.kq1 = reference.Rate[1] * logUniform(0.3, 20);
        s.kq2 = reference.Rate[1] * logUniform(0.3, 5) / strongest;
        if (s.trueModel >= 12)
            s.kq1 = s.kq2 * logUniform(0.5, 10); // of the other site
        const int samples = whole(4, 12), digits = whole(2, 4);
        const Typing typing{logUniform(1e-3, 3e-2), digits};
        const bool halved = whole(0, 1) == 1; // from sample to sample; otherwise in even steps
        for (int i = 0; i < samples; ++i) {
            const double share = halved ? std::exp2(i - samples + 1) : i / (samples - 1.0);
            s.sheet.push_back(column(s, reference, i == 0 ? 0 : strongest * share, typing));
        }
        return s;
    }

    static fit::Parameters trueValues(const Session& s)
    {
        fit::Parameters values{};
        std::size_t slot = 0;
        for (const models::Parameter& parameter : models::row(s.trueModel).fitted())
            values[++slot] = parameter.box == models::Box::K     ? s.K
                             : parameter.box == models::Box::F   ? s.F
                             : parameter.box == models::Box::kq1 ? s.kq1
                                                                 : s.kq2;
        return values;
    }

private:
    decay::Reference randomReference()
    {
        decay::Reference reference;
        reference.components = whole(1, 3);
        double lifetime = logUniform(1, 1000) * 1e-9;
        for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.components); ++k) {
            reference.A[k] = uniform(0.1, 1);
            reference.Rate[k] = 1 / lifetime;
            lifetime *= uniform(0.1, 0.6);
        }
        return reference;
    }

    struct Typing {
        double noise; // standard deviation, relative
        int digits;
    };

    /// One sample in five is typed with its mean lifetime alone.
    std::vector<std::string> column(const Session& s, const decay::Reference& reference, double Q, Typing typing)
    {
        const std::string concentration = typed(Q, 3);
        decay::MultiExponential decay =
            asTyped(decay::quenchedDecay(s.trueModel, {std::stod(concentration), 5e-5, trueValues(s)}, reference));
        if (decay.empty()) // two sites cannot have three components
            decay = {{1, reference.Rate[1]}};
        if (decay.size() > 1 && whole(0, 4) == 0)
            decay = {meanOf(decay)};
        std::vector<std::string> texts{concentration, std::to_string(decay.size())};
        for (const decay::Exponential& term : decay) {
            std::normal_distribution<double> factor(1, typing.noise);
            const double amplitude = std::max(1e-3, std::abs(term.amplitude) * factor(m_random));
            texts.push_back(typed(amplitude, 3));
            texts.push_back(typed(1e9 / term.rate * factor(m_random), typing.digits));
        }
        return texts;
    }

    static decay::Exponential meanOf(const decay::MultiExponential& decay)
    {
        double amplitude = 0, area = 0;
        for (const decay::Exponential& term : decay) {
            amplitude += term.amplitude;
            area += term.amplitude / term.rate;
        }
        return {amplitude, amplitude / area};
    }

    std::mt19937_64 m_random;
};

} // namespace support

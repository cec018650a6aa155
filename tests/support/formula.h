#pragma once

#include <QString>

#include <cmath>
#include <functional>
#include <map>
#include <stdexcept>

namespace support
{

/// Evaluates a printed formula: + − · / parentheses, numbers, named quantities, and functions of one argument.
class Formula
{
public:
    std::map<QString, double> quantities;
    std::map<QString, std::function<double(double)>> functions{{"exp", [](double x) { return std::exp(x); }}};

    double operator()(const QString& text)
    {
        m_text = QString(text).remove(' ');
        m_at = 0;
        const double value = sum();
        if (m_at != m_text.size())
            throw std::runtime_error(("left over: " + m_text.mid(m_at)).toStdString());
        return value;
    }

private:
    bool take(QChar sign)
    {
        const bool found = m_at < m_text.size() && m_text[m_at] == sign;
        m_at += found;
        return found;
    }
    double sum()
    {
        double value = take(u'−') ? -product() : product();
        for (;;) {
            if (take('+'))
                value += product();
            else if (take(u'−'))
                value -= product();
            else
                return value;
        }
    }
    double product()
    {
        double value = factor();
        for (;;) {
            if (take(u'·'))
                value *= factor();
            else if (take('/'))
                value /= factor();
            else
                return value;
        }
    }
    double factor()
    {
        if (take('('))
            return bracketed();
        QString name;
        while (m_at < m_text.size() && m_text[m_at].isLetterOrNumber())
            name += m_text[m_at++];
        if (take('('))
            return functions.at(name)(bracketed());
        bool isNumber = false;
        const double number = name.toDouble(&isNumber);
        return isNumber ? number : quantities.at(name);
    }
    double bracketed()
    {
        const double value = sum();
        if (!take(')'))
            throw std::runtime_error("a bracket is open");
        return value;
    }

    QString m_text;
    qsizetype m_at = 0;
};

} // namespace support

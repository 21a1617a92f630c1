.pragma library
// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT

// The own entries of varObj under a title line, one "  - key:" per line
// padded with blanks to desiredLength, followed by the value.
function describeVar(varObj, title = "VALUES", desiredLength = 20) {
    var text = title + ": \n"
    for (const key of Object.keys(varObj))
        text += ("  - " + key + ":").padEnd(desiredLength) + varObj[key] + "\n"
    return text
}

// Writes describeVar's text to the log; despite its name it returns nothing.
function varToString(varObj, title = "VALUES", desiredLength = 20) {
    console.log(describeVar(varObj, title, desiredLength))
}

// Clamps val into [min, max]; when min > max the result is max.
function bound(val, min, max) {
    return Math.min(Math.max(val, min), max)
}

// Event counts with K, M and G units; negative counts are written unscaled.
function format_event(val) {
    if (val >= 1e9)
        return (val / 1e9).toFixed(2) + "G"
    if (val >= 1e6)
        return (val / 1e6).toFixed(2) + "M"
    if (val >= 1e3)
        return (val / 1e3).toFixed(2) + "K"
    return val.toFixed(2)
}

const smallLimits = [1e-15, 1e-12, 1e-9, 1e-6, 1e-3, 1]
const smallFactors = [1e18, 1e15, 1e12, 1e9, 1e6, 1e3]

// Writes num scaled by the first thousand-step range that holds |num|, from
// [1e-18, 1e-15) up to [1, inf), followed by that range's suffix (seven
// suffixes, smallest range first); magnitudes below 1e-18 are written "0".
function formatSmall(num, decimals, suffixes) {
    const a = Math.abs(num)
    if (a < 1e-18)
        return "0"
    for (let k = 0; k < smallLimits.length; ++k) {
        if (a < smallLimits[k])
            return (num * smallFactors[k]).toFixed(decimals) + suffixes[k]
    }
    return num.toFixed(decimals) + suffixes[smallLimits.length]
}

// Axis tick step for a span shown with at most maxTicks ticks: a power of two
// times the largest power of 1000 not above the span, so labels stay round in
// engineering units.
function tickStep(span, maxTicks) {
    const base = Math.pow(1000, Math.floor(Math.log10(span) / 3))
    const perTick = span / base / maxTicks
    return Math.pow(2, Math.ceil(Math.log2(perTick))) * base
}

// Tick step for a span shown with at most maxTicks ticks (a fraction
// allowed): the smallest 1, 2 or 5 times a power of ten not below
// span / maxTicks, so that every tick value is a short decimal. A step that
// misses the bound by rounding noise only still counts as reaching it. NaN
// when there is no finite positive bound.
function roundTickStep(span, maxTicks) {
    const perTick = span / maxTicks
    if (!(perTick > 0) || !isFinite(perTick))
        return NaN
    const exponent = Math.floor(Math.log10(perTick))
    for (const mantissa of [1, 2, 5]) {
        const step = decimalStep(mantissa, exponent)
        if (step >= perTick * (1 - 1e-9))
            return step
    }
    return decimalStep(10, exponent)
}

// mantissa × 10^exponent as the double nearest to that decimal: dividing by
// an exact power of ten avoids the noise of multiplying by 0.1, 0.01, ...
function decimalStep(mantissa, exponent) {
    return exponent < 0 ? mantissa / Math.pow(10, -exponent) : mantissa * Math.pow(10, exponent)
}

// Decimals needed to write the multiples of a roundTickStep step exactly.
function stepDecimals(step) {
    return Math.max(0, -Math.floor(Math.log10(step) + 1e-9))
}

// value written with the step's decimals and read back: the round number that
// value stands for, without float noise (-0.2, not -0.20000000000000004).
function roundToStep(value, step) {
    return Number(value.toFixed(Math.min(stepDecimals(step), 100)))
}

// Round time steps in seconds, from a second to a week.
const timeSteps = [1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200,
                   86400, 172800, 604800]

// Tick step in seconds for a time span shown with at most maxTicks ticks: a
// round time step from a second to a week, a 1, 2 or 5 x 10^k step below a
// second and above a week (in days). NaN without a finite positive bound.
function timeTickStep(span, maxTicks) {
    const perTick = span / maxTicks
    if (!(perTick > 0) || !isFinite(perTick))
        return NaN
    if (perTick < 1)
        return roundTickStep(span, maxTicks)
    for (const step of timeSteps) {
        if (step >= perTick * (1 - 1e-9))
            return step
    }
    return roundTickStep(span / 86400, maxTicks) * 86400
}

// The label of the time seconds after origin for ticks step seconds apart:
// the time of day to the step's precision (days: none), preceded by the date
// where it differs from the previous tick's (first: the first tick).
function timeLabel(origin, seconds, step, first) {
    const at = new Date(origin.getTime() + seconds * 1000)
    const before = new Date(origin.getTime() + (seconds - step) * 1000)
    const date = Qt.formatDate(at, "yyyy-MM-dd")
    if (step >= 86400)
        return date
    let time = Qt.formatTime(at, step >= 60 ? "HH:mm" : "HH:mm:ss")
    if (step < 1) {
        // Sub-second digits from the origin's milliseconds and the offset,
        // which keep their precision where the epoch's seconds would not;
        // rounded to the step, a fraction that reaches 1 is the next second.
        const digits = stepDecimals(step)
        const fraction = ((origin.getMilliseconds() / 1000 + seconds) % 1 + 1) % 1
        const rounded = Math.round(fraction * Math.pow(10, digits)) / Math.pow(10, digits)
        const whole = new Date(at.getTime() + (rounded - fraction) * 1000)
        time = Qt.formatTime(whole, "HH:mm:ss") + (rounded % 1).toFixed(digits).slice(1)
    }
    return first || Qt.formatDate(before, "yyyy-MM-dd") !== date ? date + " " + time : time
}

// Starts picking a colour for the plotter at index of a legend.
function pickColor(legend, dialog, index) {
    legend.currColorSelected = index
    dialog.open()
}

// Gives plotters[index] the colour picked in a legend's colour dialog.
function setPlotterColor(plotters, index, color) {
    if (plotters && index >= 0 && index < plotters.length)
        plotters[index].color = color
}

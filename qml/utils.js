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

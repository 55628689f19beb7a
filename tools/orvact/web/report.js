// The events stand in columns: ids and times as steps, names, users and channels as numbers of the texts in pools.
"use strict";

(() => {
    const data = JSON.parse(document.getElementById("data").textContent);
    const byId = (id) => document.getElementById(id);
    const count = data.ids.length;
    const sums = (steps) => {
        let sum = 0;
        return Float64Array.from(steps, (step) => (sum += step));
    };
    const ids = sums(data.ids);
    const times = sums(data.times);

    const make = (tag, parent, text = "", attributes = {}) => {
        const element = document.createElement(tag);
        element.textContent = text;
        for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
        parent.append(element);
        return element;
    };
    const number = (value) => value.toLocaleString("en");
    const clock = (time, length = 19) => new Date(time).toISOString().slice(0, length).replace("T", " ");
    const duration = (milliseconds) => {
        const seconds = Math.round(milliseconds / 1000);
        const units = [[86400, "d"], [3600, "h"], [60, "min"], [1, "s"]];
        const first = units.findIndex(([size]) => seconds >= size);
        if (first < 0) return `${Math.round(milliseconds)} ms`;
        const [size, unit] = units[first];
        const [less, smaller] = units[first + 1] || [1, ""];
        const rest = Math.floor((seconds % size) / less);
        return `${Math.floor(seconds / size)} ${unit}` + (smaller && rest ? ` ${rest} ${smaller}` : "");
    };
    const named = (text) => text || "(none)";

    // How often each number occurs, the most frequent first.
    const ranked = (column, pool, skipsEmpty) => {
        const counts = new Uint32Array(pool.length);
        for (const value of column) ++counts[value];
        return [...counts.keys()].filter((i) => counts[i] > 0 && !(skipsEmpty && pool[i] === ""))
            .sort((a, b) => counts[b] - counts[a]).map((i) => [i, counts[i]]);
    };
    const classOf = (event) => data.classOfName[data.name[event]];
    const classColumn = Array.from({ length: count }, (_, event) => classOf(event));
    const classes = ranked(classColumn, data.classes, false);
    const hue = new Map(classes.map(([id], rank) => [id, Math.round(210 + rank * 137.5) % 360]));
    const colour = (id) => `hsl(${hue.get(id)} 60% 52%)`;

    // ---- the head -------------------------------------------------------------------------------------------------

    document.title = `Events of ${data.database}`;
    byId("summary").textContent = count === 0 ? `${data.database} holds none that fit.` :
        `${number(count)} of ${data.database}, ${clock(times[0])} to ${clock(times[count - 1])} UTC; ` +
        `written ${clock(Date.parse(data.written))} UTC`;

    // ---- over time ------------------------------------------------------------------------------------------------

    const kBins = 96;
    function drawTimeline() {
        let from = Infinity, to = -Infinity;
        for (const time of times) {
            from = Math.min(from, time);
            to = Math.max(to, time);
        }
        const width = Math.max(1, (to - from + 1) / kBins);
        const bins = Array.from({ length: kBins }, () => new Map());
        for (let event = 0; event < count; ++event) {
            const bin = bins[Math.min(kBins - 1, Math.floor((times[event] - from) / width))];
            const id = classColumn[event];
            bin.set(id, (bin.get(id) || 0) + 1);
        }
        const sizes = bins.map((bin) => [...bin.values()].reduce((a, b) => a + b, 0));
        const highest = Math.max(1, ...sizes);
        const shapes = [];
        bins.forEach((bin, x) => {
            let y = 100;
            for (const [id] of classes) {
                const height = (100 * (bin.get(id) || 0)) / highest;
                if (height === 0) continue;
                y -= height;
                shapes.push(`<rect x="${x + 0.06}" y="${y}" width=".88" height="${height}" fill="${colour(id)}"/>`);
            }
            if (sizes[x] === 0) return;
            const title = `${clock(from + x * width)}, ${duration(width)}: ${number(sizes[x])} events`;
            shapes.push(`<rect x="${x}" y="0" width="1" height="100" fill="transparent"><title>${title}</title></rect>`);
        });
        byId("timeline").innerHTML =
            `<svg viewBox="0 0 ${kBins} 100" preserveAspectRatio="none" role="img" ` +
            `aria-label="Events over time, at most ${highest} in ${duration(width)}">${shapes.join("")}</svg>`;
        const axis = make("div", byId("timeline"), "", { class: "axis" });
        make("span", axis, clock(from, 16));
        make("span", axis, `a bar is ${duration(width)}, at most ${number(highest)}`);
        make("span", axis, clock(to, 16));
    }

    function drawLegend() {
        for (const [id, occurs] of classes) {
            const button = make("button", make("li", byId("legend")), "", { type: "button", "aria-pressed": "false" });
            make("i", button).style.background = colour(id);
            button.append(`${named(data.classes[id])} ${number(occurs)}`);
            button.addEventListener("click", () => {
                chosen.has(id) ? chosen.delete(id) : chosen.add(id);
                button.setAttribute("aria-pressed", chosen.has(id));
                find();
            });
        }
    }

    // ---- the busiest ----------------------------------------------------------------------------------------------

    const kBusiest = 10;
    function drawBars(id, rows) {
        const list = byId(id);
        if (rows.length === 0) make("li", list, "none", { class: "quiet" });
        for (const { text, amount, share, open } of rows.slice(0, kBusiest)) {
            const row = make("li", list);
            make("i", row).style.width = `${100 * share}%`;
            const label = make("button", row, text, { type: "button", title: text });
            make("b", row, amount);
            label.addEventListener("click", open);
        }
    }
    function drawBusiest(id, column, pool, words) {
        const rows = ranked(column, pool, true);
        drawBars(id, rows.map(([value, occurs]) => ({
            text: pool[value],
            amount: number(occurs),
            share: occurs / rows[0][1],
            open: () => search(words(pool[value])),
        })));
    }
    function drawGaps() {
        const gaps = [];
        for (let event = 1; event < count; ++event) gaps.push([times[event] - times[event - 1], event]);
        gaps.sort((a, b) => b[0] - a[0]);
        const longest = gaps.filter(([length]) => length > 0).slice(0, kBusiest);
        drawBars("gaps", longest.map(([length, event]) => ({
            text: clock(times[event]),
            amount: duration(length),
            share: length / longest[0][0],
            open: () => {
                search("");
                box.scrollTop = Math.max(0, event - 3) * kRow;
            },
        })));
    }

    // ---- the table: only the rows that can be seen exist ------------------------------------------------------------

    const kRow = 26;
    const kTallest = 15000000;  // what browsers still lay out
    const box = byId("table");
    const rows = byId("rows");
    const input = byId("search");
    const chosen = new Set();
    let shown = Uint32Array.from({ length: count }, (_, event) => event);
    let lines = null;  // the texts to search in, made at the first search

    const textOf = (event) => data.texts[event] || `${data.names[data.name[event]]}, which cannot be restored`;
    function lineOf(event) {
        const parts = [ids[event], clock(times[event]), data.classes[classOf(event)], data.users[data.user[event]],
            data.channels[data.channel[event]], textOf(event)];
        return parts.join(" ").toLowerCase();
    }
    function find() {
        const words = input.value.toLowerCase().split(/\s+/).filter(Boolean);
        if (words.length > 0 && !lines) lines = Array.from({ length: count }, (_, event) => lineOf(event));
        const fits = (event) => (chosen.size === 0 || chosen.has(classColumn[event])) &&
            words.every((word) => lines[event].includes(word));
        const found = [];
        for (let event = 0; event < count; ++event) {
            if (fits(event)) found.push(event);
        }
        shown = found;
        box.scrollTop = 0;
        draw();
    }
    function draw() {
        const height = Math.min(kTallest, shown.length * kRow);
        const visible = Math.ceil(box.clientHeight / kRow) + 2;
        const last = Math.max(0, shown.length - visible + 2);
        const scale = height < shown.length * kRow ? last / Math.max(1, height - box.clientHeight) : 1 / kRow;
        const first = Math.min(last, Math.floor(box.scrollTop * scale));
        const top = height < shown.length * kRow ? box.scrollTop : first * kRow;
        rows.style.height = `${height}px`;
        rows.replaceChildren();
        for (let i = first; i < Math.min(shown.length, first + visible); ++i) {
            const row = make("div", rows);
            row.style.top = `${top + (i - first) * kRow}px`;
            make("span", row, String(ids[shown[i]]).padStart(String(ids[count - 1]).length));
            make("span", row, clock(times[shown[i]], 23));
            row.append(textOf(shown[i]));
        }
        byId("found").textContent = shown.length === count ? `${number(count)} events` :
            `${number(shown.length)} of ${number(count)} events`;
    }
    function search(text) {
        input.value = text;
        find();
        input.scrollIntoView({ block: "nearest" });
    }

    if (count > 0) {
        drawTimeline();
        drawLegend();
    }
    drawBusiest("actions", data.name, data.names, (name) => `${name} (`);
    drawBusiest("channels", data.channel, data.channels, (name) => name);
    drawBusiest("users", data.user, data.users, (name) => name);
    drawGaps();
    draw();
    input.addEventListener("input", find);
    box.addEventListener("scroll", draw, { passive: true });
    window.addEventListener("resize", draw);
    document.addEventListener("keydown", (event) => {
        if (event.key === "/" && document.activeElement !== input) {
            event.preventDefault();
            input.focus();
        } else if (event.key === "Escape" && document.activeElement === input) {
            search("");
        }
    });
})();

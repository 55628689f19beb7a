// The search of every page. index.js holds what there is: kind, name, number, plain name, address, other words, extension.
"use strict";

(() => {
    const kMost = 50;
    const root = document.documentElement.dataset.root;
    const input = document.getElementById("search");
    const found = document.getElementById("found");
    const results = document.getElementById("results");
    const content = document.getElementById("content");
    const kinds = ["action", "class", "enum", "type", "column", "general parameter", "parameter"];
    const entries = catalogueIndex.map(([kind, name, number, plain, address, also, extension]) => ({
        kind, name, number, plain, address, extension,
        lower: name.toLowerCase(),
        words: [name, number, plain, also, kind].join(" ").toLowerCase(),
        plainLower: plain.toLowerCase(),
    }));
    let current = 0;

    // Less is better; the first letters of a name count most, then its inside, then what people call it.
    function rank(entry, query) {
        const place = entry.lower === query || entry.number === query ? 0 :
            entry.lower.startsWith(query) ? 1 :
            entry.lower.includes(query) ? 2 :
            entry.plainLower.includes(query) ? 3 : 4;
        return place * 100 + kinds.indexOf(entry.kind);
    }

    function look(text) {
        const query = text.trim().toLowerCase();
        const words = query.split(/\s+/).filter(Boolean);
        if (words.length === 0) return [];
        return entries.filter((entry) => words.every((word) => entry.words.includes(word)))
            .map((entry) => [rank(entry, query), entry])
            .sort(([a, first], [b, second]) => a - b || (first.lower < second.lower ? -1 : 1))
            .map(([, entry]) => entry);
    }

    function add(parent, tag, className, text) {
        const element = document.createElement(tag);
        element.className = className;
        element.textContent = text;
        parent.append(element);
        return element;
    }

    function choose(place) {
        const links = results.querySelectorAll("a");
        if (links.length === 0) return;
        current = (place + links.length) % links.length;
        links.forEach((link, i) => link.setAttribute("aria-current", i === current));
        links[current].scrollIntoView({ block: "nearest" });
    }

    function show() {
        const fits = look(input.value);
        const searches = input.value.trim() !== "";
        results.replaceChildren();
        for (const entry of fits.slice(0, kMost)) {
            const link = add(add(results, "li", "", ""), "a", "", "");
            link.href = root + entry.address;
            add(link, "span", "kind quiet", entry.kind);
            const text = add(link, "span", "", "");
            add(text, "b", "", entry.name);
            text.append(entry.plain ? `  ${entry.plain}` : "");
            if (entry.extension) add(text, "i", "mark", "extension");
            add(link, "span", "quiet", entry.number);
        }
        found.textContent = !searches ? "" :
            fits.length === 0 ? "Nothing fits." :
            fits.length > kMost ? `${fits.length} fit; the first ${kMost} are shown.` : "";
        content.hidden = searches;
        choose(0);
        history.replaceState(null, "", searches ? `#q=${encodeURIComponent(input.value)}` : location.pathname);
    }

    input.addEventListener("input", show);
    input.addEventListener("keydown", (event) => {
        const link = results.querySelectorAll("a")[current];
        if (event.key === "ArrowDown") choose(current + 1);
        else if (event.key === "ArrowUp") choose(current - 1);
        else if (event.key === "Enter" && link) link.click();
        else if (event.key === "Escape") {
            input.value = "";
            show();
            input.blur();
        } else return;
        event.preventDefault();
    });
    document.addEventListener("keydown", (event) => {
        if (event.key !== "/" || event.ctrlKey || event.metaKey || event.altKey || document.activeElement === input) return;
        event.preventDefault();
        input.focus();
        input.select();
    });

    // A column, a type or a parameter that a link leads to shows who uses it.
    function openTarget() {
        const heading = location.hash.length > 1 && document.getElementById(decodeURIComponent(location.hash.slice(1)));
        const details = heading && heading.nextElementSibling && heading.nextElementSibling.nextElementSibling;
        if (details && details.tagName === "DETAILS") details.open = true;
        if (heading) heading.scrollIntoView();
    }
    addEventListener("hashchange", openTarget);
    if (location.hash.startsWith("#q=")) {
        input.value = decodeURIComponent(location.hash.slice(3));
        show();
    } else {
        openTarget();
    }
})();

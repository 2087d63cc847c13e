// Searches all pages. The index is a script of its own, because a page that is read from the disk may
// load no other files; it is fetched when somebody begins to type.
"use strict";
(function () {
  const words = document.currentScript.dataset;
  const most = 25;

  // "Übersicht" is found by "ubersicht" and "uebersicht" finds nothing else than "übersicht" does.
  const fold = (text) => text.toLowerCase().replace(/ß/g, "ss").normalize("NFD").replace(/[\u0300-\u036f]/g, "");
  const wordsOf = (text) => text.split(/[^\p{L}\p{N}]+/u).filter(Boolean);
  const german = (text) => fold(text).replace(/([aou])e/g, "$1");

  const element = (name, values, ...inside) => {
    const made = Object.assign(document.createElement(name), values);
    made.append(...inside);
    return made;
  };

  const field = element("input", { type: "search", id: "search", placeholder: words.label, autocomplete: "off" });
  field.setAttribute("aria-label", words.label);
  const form = element("form", {}, field);
  form.setAttribute("role", "search");
  const count = element("p", {});
  count.setAttribute("role", "status");
  const list = element("ol", {});
  const results = element("section", { id: "results", hidden: true }, count, list);
  document.querySelector("header").append(form);
  document.querySelector("main").before(results);

  let passages = null;
  function load(then) {
    if (passages) { then(); return; }
    const script = element("script", { src: "index.js" });
    script.onload = () => {
      passages = window.helpIndex.map(([page, anchor, title, heading, text]) => ({
        page, anchor, title, heading, text,
        folded: [title, heading, text].map(fold),
        spoken: " " + wordsOf(fold(text)).join(" ") + " ",
      }));
      then();
    };
    document.head.append(script);
  }

  // How well a passage answers: each word must be there, in a heading it counts more. Of a sentence that
  // was pasted some may differ (names, numbers); there it counts which words follow each other.
  function weigh(passage, wanted) {
    let weight = 0;
    let missing = 0;
    for (const word of wanted) {
      const [title, heading, text] = passage.folded;
      const best = heading.includes(word) ? 20 : title.includes(word) ? (passage.anchor ? 6 : 30) : 0;
      const times = Math.min(text.split(word).length - 1, 5);
      if (!best && !times) missing++;
      weight += best + times;
    }
    const sentence = wanted.length > 3;
    if (missing > (sentence ? wanted.length / 2 : 0)) return 0;
    for (let i = 1; i < wanted.length; i++)
      if (passage.spoken.includes(` ${wanted[i - 1]} ${wanted[i]} `)) weight += 100;
    return weight;
  }

  // The text around the first word, with all of them marked.
  function excerpt(passage, wanted) {
    const text = passage.text;
    // Folding may change the length, so the place is looked for letter by letter.
    const letters = Array.from(text, fold);
    const folded = letters.join("");
    const places = [];
    let at = 0;
    for (const letter of letters) {
      for (let i = 0; i < letter.length; i++) places.push(at);
      at++;
    }
    const source = Array.from(text);
    const first = Math.min(...wanted.map((word) => (folded + word).indexOf(word)));
    const blank = (from) => source.indexOf(" ", from) < 0 ? source.length : source.indexOf(" ", from);
    const begin = first > 50 ? blank((places[first] || 0) - 50) + 1 : 0;
    const end = blank(Math.min(source.length, begin + 180));
    const marked = new Array(source.length).fill(false);
    for (const word of wanted)
      for (let i = folded.indexOf(word); i >= 0; i = folded.indexOf(word, i + word.length))
        for (let k = i; k < i + word.length; k++) marked[places[k]] = true;
    const line = element("p", {}, begin > 0 ? "… " : "");
    for (let i = begin; i < end;) {
      let next = i;
      while (next < end && marked[next] === marked[i]) next++;
      const piece = source.slice(i, next).join("");
      line.append(marked[i] ? element("mark", {}, piece) : piece);
      i = next;
    }
    if (end < source.length) line.append(" …");
    return line;
  }

  function show() {
    const typed = field.value.trim();
    document.querySelector("main").hidden = results.hidden = false;
    results.hidden = typed === "";
    document.querySelector("main").hidden = typed !== "";
    if (typed === "") return;
    const search = (turn) => {
      const wanted = wordsOf(turn(typed));
      return { wanted, found: passages.map((passage) => ({ passage, weight: weigh(passage, wanted) }))
        .filter((each) => each.weight > 0).sort((a, b) => b.weight - a.weight) };
    };
    let { wanted, found } = search(fold);
    if (!found.length) ({ wanted, found } = search(german));
    count.textContent = found.length ? words.found + " " + found.length : words.nothing;
    list.replaceChildren(...found.slice(0, most).map(({ passage }) => {
      const address = passage.page + (passage.anchor ? "#" + passage.anchor : "");
      const name = passage.heading ? passage.title.replace(/:.*/, "") + ": " + passage.heading : passage.title;
      const link = element("a", { href: address }, name);
      link.addEventListener("click", () => { field.value = ""; show(); });
      return element("li", {}, link, excerpt(passage, wanted));
    }));
  }

  field.addEventListener("input", () => load(show));
  field.addEventListener("keydown", (event) => {
    if (event.key === "Escape") { field.value = ""; show(); }
  });
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    const first = list.querySelector("a");
    if (first && !results.hidden) first.focus();
  });
  // Back to a page on which something was typed.
  window.addEventListener("pageshow", () => { if (field.value) load(show); });
})();

// The search form and its results, in the page itself. With the index that "olh dmerge" makes, find.js answers. In a root
// without one the titles of topics are looked through, and their text: QELdata/QELSearchText.js beside a manual's topic
// table, or the pages themselves where the browser reads them, which it does not from file://. Needs page.js and find.js.
var olhSearch = (function () {
  'use strict';
  var PAGES_READ = 300, AT_ONCE = 6, SHOWN = 8, SEARCHING = 'Searching \u2026', FAILED = 'The search failed. Reload the page and search again.', last = Promise.resolve(), turn = 0;

  // The text of topics from their pages, each page once and not too many of them. A page is only read, none of its
  // scripts runs.
  async function readPages(topics) {
    var pages = new Map();
    topics.forEach(function (topic) {
      var page = topic.href.replace(/#.*/, '');
      if (pages.has(page)) pages.get(page).push(topic);
      else if (pages.size < PAGES_READ) pages.set(page, [topic]);
    });
    var waiting = Array.from(pages);
    async function read() {
      for (var next = waiting.shift(); next; next = waiting.shift()) {
        var markup = await fetch(next[0]).then(function (answer) { return answer.ok ? answer.text() : ''; }, function () { return ''; });
        var main = new DOMParser().parseFromString(markup, 'text/html').querySelector('main, body');
        next[1][0].passages.push({ anchor: '', heading: '', text: main.textContent.replace(/\s+/g, ' ') });
      }
    }
    await Promise.all(Array.from({ length: AT_ONCE }, read));
  }

  // A manual's topics. One manual after the other, since every table calls the same three functions.
  function manual(base, title, name) {
    last = last.then(function () {
      var book = { title: title, topics: [] }, known = new Map(), folder = base + encodeURIComponent(name) + '/';
      window.QELAddBookVar = function () {};
      window.QELAddTopic = function (row) {
        var topic = { id: String(row[0]), href: folder + row[1], title: String(row[2] || row[0]), passages: [] };
        book.topics.push(topic);
        if (!known.has(row[0])) known.set(row[0], topic);
      };
      window.QELAddText = function (row) {
        var topic = known.get(row[0]);
        if (topic) topic.passages.push({ anchor: row[1], heading: row[2], text: row[3] });
      };
      return olh.script(folder + 'QELdata/QELAllData.js')
        .then(function (there) { return there && olh.script(folder + 'QELdata/QELSearchText.js'); })
        .then(function (there) { book.hasText = there; return book; });
    });
    return last;
  }

  // What is looked for: the first words of a query, without the quotes that people put around them.
  function words(query) {
    return Array.from(new Set(query.toLowerCase().split(/[\s"\u201c\u201d]+/).filter(Boolean))).slice(0, 16);
  }

  function holds(text, word) { return text.toLowerCase().includes(word); }

  // How well a topic answers: every word must occur. A title counts for more than a name, that for more than a heading,
  // that for more than text; words next to each other count for more than words apart.
  function score(topic, wanted) {
    var sum = 0, all = topic.passages.map(function (passage) { return passage.text; }).join(' ').toLowerCase();
    for (var i = 0; i < wanted.length; i++) {
      var word = wanted[i], heading = topic.passages.some(function (passage) { return holds(passage.heading, word); });
      var points = (holds(topic.title, word) ? 12 : 0) + (holds(topic.id, word) ? 6 : 0) + (heading ? 4 : 0) + Math.min(all.split(word).length - 1, 5);
      if (!points) return 0;
      sum += points;
    }
    return wanted.length > 1 && (topic.title.toLowerCase() + ' ' + all).includes(wanted.join(' ')) ? sum + 10 : sum;
  }

  // The passage that holds most of the words, first of all in its heading.
  function best(topic, wanted) {
    var most = -1, found = null;
    topic.passages.forEach(function (passage) {
      var count = wanted.reduce(function (sum, word) { return sum + (holds(passage.text, word) ? 2 : 0) + (holds(passage.heading, word) ? 3 : 0); }, 0);
      if (wanted.length > 1 && holds(passage.text, wanted.join(' '))) count += 3;
      if (count > most) { most = count; found = passage; }
    });
    return found;
  }

  // The text around the first word found in it, with every wanted word marked.
  function excerpt(text, wanted) {
    var low = text.toLowerCase(), phrase = low.indexOf(wanted.join(' ')), at = phrase >= 0 ? phrase : Math.min.apply(null, wanted.map(function (word) {
      return low.indexOf(word) < 0 ? low.length : low.indexOf(word);
    }));
    if (at === low.length) at = 0;
    var from = at < 70 ? 0 : low.indexOf(' ', at - 70) + 1, to = from + 200 < text.length ? low.lastIndexOf(' ', from + 200) : text.length;
    var pattern = wanted.map(function (word) { return word.replace(/[.*+?^${}()|[\]\\]/g, '\\$&'); }).join('|');
    var parts = text.slice(from, to).split(new RegExp('(' + pattern + ')', 'i')).map(function (part, i) {
      return i % 2 ? olh.element('mark', {}, part) : part;
    });
    return [from ? '\u2026 ' : ''].concat(parts, to < text.length ? ' \u2026' : '');
  }

  // Without an index: searches libraries, rows of [title, name, kind] as in LibList.js, below base (the way to the root, with "/").
  // What titles give is shown at once.
  async function run(base, libraries, wanted, show) {
    var books = [];
    function best() {
      return books.flatMap(function (book) {
        return book.topics.map(function (topic) { return { points: score(topic, wanted), topic: topic, book: book }; });
      }).filter(function (hit) { return hit.points; }).sort(function (a, b) { return b.points - a.points; });
    }
    for (var library of libraries) {
      if (library[2] === 'pdf') {
        books.push({ title: 'PDF', topics: [{ id: library[1], href: base + 'pdfdocs/' + encodeURIComponent(library[1]) + '.pdf', title: library[0], passages: [] }] });
        continue;
      }
      var book = await manual(base + 'htmldocs/', library[0], library[1]);
      books.push(book);
      show(best());
      if (!book.hasText && /^http/.test(location.protocol)) await readPages(book.topics);
    }
    return best();
  }

  function row(hit, wanted) {
    var passage = best(hit.topic, wanted);
    var item = olh.element('li', {}, [olh.element('a', { href: hit.topic.href }, hit.topic.title), olh.element('span', { 'class': 'from' }, hit.book.title)]);
    if (!passage) return item;
    var place = passage.anchor && passage.heading !== hit.topic.title
      ? [olh.element('a', { href: hit.topic.href.replace(/#.*/, '') + '#' + passage.anchor }, passage.heading), ': '] : [];
    item.append(olh.element('p', {}, place.concat(excerpt(passage.text, wanted))));
    return item;
  }

  function counted(number, one, many) { return number + ' ' + (number === 1 ? one : many); }

  // A query as it is shown: one with a phrase has quotation marks already.
  function quoted(query) { return /["\u201c\u201d\u201e]/.test(query) ? olh.shown(query) : '"' + olh.shown(query) + '"'; }

  function sayWithout(say, found, query) {
    say.textContent = (found.length ? counted(found.length, 'place', 'places') + ' for ' + quoted(query) + '.'
      : 'No page has all the words of ' + quoted(query) + '. Fewer or shorter words find more.') +
      ' This root has no search index; "olh dmerge" makes it.';
  }

  // What a search came to, and what was searched.
  function outcome(index, answer, query, names) {
    var words = answer.words.filter(function (word) { return word.taken !== word.asked; }), rest = answer.total - answer.complete;
    var said = words.map(function (word) {
      return (word.taken ? 'Results for ' + quoted(word.taken) + '. ' : '') + quoted(word.asked) + ' was not found.';
    });
    if (answer.complete) said.push(counted(answer.complete, 'page', 'pages') + ' for ' + quoted(query) + (rest ? ', and ' + rest + ' with most of the words.' : '.'));
    else if (answer.hasPhrases) said.push('No page has these words in this order: ' + quoted(query) + '.');
    else if (rest) said.push('No page has all the words of ' + quoted(query) + '. ' + counted(rest, 'page has', 'pages have') + ' some of them.');
    else said.push('No page has all the words of ' + quoted(query) + '. Fewer or shorter words find more.');
    if (answer.cut) said.push('The phrase was looked for in the best pages only.');
    var without = index.manuals.filter(function (manual) { return manual.unsearched && (!names || names.indexOf(manual.name) >= 0); });
    without.slice(0, 5).forEach(function (manual) { said.push(manual.title + ' ' + manual.unsearched + '.'); });
    if (without.length > 5) said.push(counted(without.length - 5, 'more manual', 'more manuals') + ' cannot be searched.');
    return said.join(' ');
  }

  // The address of a hit, with the words that its page is to mark.
  function addressOf(hit, marks) {
    var parts = hit.href.split('#');
    if (hit.manual.pdf) return hit.href;
    return parts[0] + '?mark=' + marks.map(encodeURIComponent).join('%20') + (parts.length > 1 ? '#' + parts[1] : '');
  }

  // A row of the list, with its manual where there are several. What of the words is not in the page is said.
  function hitRow(hit, answer, marks, isOnly) {
    var missing = answer.words.filter(function (word, i) { return !(hit.words >> i & 1); }).map(function (word) { return word.asked; });
    var heading = hit.anchor && hit.heading !== hit.title ? [olh.element('span', { 'class': 'place' }, olhFind.nodes(olhFind.excerpt(hit.heading, marks))), /[.:?!]$/.test(hit.heading) ? ' ' : ': '] : [];
    return olh.element('li', {}, [olh.element('a', { href: addressOf(hit, marks) }, hit.title), isOnly ? '' : olh.element('span', { 'class': 'from' }, hit.manual.title),
      olh.element('p', {}, heading.concat(olhFind.nodes(olhFind.excerpt(hit.text, marks)))),
      missing.length ? olh.element('p', { 'class': 'without' }, 'Without: ' + missing.join(', ')) : '']);
  }

  // Fills the list from the index, more of it on request; says whether there is one. `overtaken` says that a newer search has begun.
  async function fill(base, query, names, say, list, more, overtaken) {
    var next = 0, isLoading = false, show, said;
    var there = await ask(base, query, names, SHOWN, overtaken, function (index, answer) {
      var marks = olhFind.marksOf(answer, query);
      list.replaceChildren();
      said = function () {
        say.textContent = outcome(index, answer, query, names);
        next += SHOWN;
        more.hidden = next >= answer.total;
      };
      show = function (hit) {
        if (overtaken()) return false;
        list.append(hitRow(hit, answer, marks, names && names.length === 1));
      };
      more.onclick = function () {
        if (isLoading) return;
        isLoading = true;
        var before = list.children.length;
        olhFind.hits(index, answer, next, SHOWN, show).finally(function () { isLoading = false; }).then(said).then(function () {
          if (more.hidden && list.children[before]) list.children[before].querySelector('a').focus();  // the button had the focus
        });
      };
      return show;
    });
    if (there && !overtaken()) said();
    return there;
  }

  async function fillWithout(base, libraries, query, say, list, overtaken) {
    var wanted = words(query);
    function show(found) {
      if (overtaken()) return;
      list.replaceChildren.apply(list, found.slice(0, 100).map(function (hit) { return row(hit, wanted); }));
    }
    var found = await run(base, libraries, wanted, show);
    show(found);
    if (!overtaken()) sayWithout(say, found, query);
  }

  var indexes = {};
  function indexOf(base) {
    indexes[base] = indexes[base] || olhFind.open(base);
    return indexes[base];
  }

  // Asks the index below base; says whether there is one. begin(index, answer) is called with what was found, and gives what
  // is called with each of so many hits as its text comes. For an index that was replaced since the page opened begin is called
  // once more, with the new one. Where `overtaken` says that a newer search has begun, nothing is called or loaded any more.
  async function ask(base, query, names, count, overtaken, begin) {
    for (var again = false; ; again = true) {
      var index = await indexOf(base);
      if (!index) return false;
      var answer = await olhFind.find(index, query, names);
      if (overtaken()) return true;
      if (!index.isGone || again) await olhFind.hits(index, answer, 0, count, begin(index, answer));
      if (!index.isGone || again || overtaken()) return true;
      indexes[base] = olhFind.open(base, index);
    }
  }

  // The search form and, when there is a query, its results: in libraries, or in all documents where these are all. go(query,
  // scope) is called with what a person asks.
  function panel(base, libraries, query, scopes, scope, go) {
    var field = olh.element('input', { type: 'search', id: 'query', name: 'query', value: query }), mine = ++turn;
    var choice = olh.element('select', { id: 'scope' }, scopes.map(function (pair) {
      return olh.element('option', Object.assign({ value: pair[1] }, pair[1] === scope ? { selected: '' } : {}), pair[0]);
    }));
    var form = olh.element('form', { 'class': 'ask', role: 'search' }, [olh.element('label', { 'for': 'query' }, ['Words to look for', field]),
      olh.element('label', { 'for': 'scope' }, ['Look in', choice]), olh.element('button', {}, 'Search')]);
    form.addEventListener('submit', function (event) { event.preventDefault(); go(field.value, choice.value); });
    var say = olh.element('p', { role: 'status' }), list = olh.element('ol', { 'class': 'list', id: 'found' });
    var more = olh.element('button', { type: 'button', 'class': 'more', hidden: '' }, 'More results');
    if (query.trim()) {
      var names = scope ? libraries.map(function (one) { return one[1]; }) : null, overtaken = function () { return mine !== turn; };
      say.textContent = SEARCHING;
      fill(base, query, names, say, list, more, overtaken).then(function (there) {
        return there || fillWithout(base, libraries, query, say, list, overtaken);
      }).catch(function (error) {
        console.error(error);
        if (!overtaken()) say.textContent = FAILED;
      });
    }
    return olh.element('section', { 'aria-label': 'Search' }, [form, say, list, more]);
  }

  return { panel: panel, indexOf: indexOf, ask: ask, FAILED: FAILED, SEARCHING: SEARCHING, addressOf: addressOf, outcome: outcome };
})();

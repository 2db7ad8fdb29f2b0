// Search in the page itself: over titles, topics and the text of topics. The text stands in QELdata/QELSearchText.js
// beside a manual's topic table; without it, the topics' pages are read where the browser allows it, which it does not
// from file://. Needs page.js.
var olhSearch = (function () {
  'use strict';
  var last = Promise.resolve();

  // The text of topics from their pages, each as one passage. A page is only read, none of its scripts runs.
  function readPages(topics) {
    return Promise.all(topics.map(function (topic) {
      return fetch(topic.href).then(function (answer) { return answer.ok ? answer.text() : ''; }).then(function (markup) {
        var main = new DOMParser().parseFromString(markup, 'text/html').querySelector('main, body');
        topic.passages.push({ anchor: '', heading: '', text: main.textContent.replace(/\s+/g, ' ') });
      }, function () {});
    }));
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
        .then(function (there) { return there || !/^http/.test(location.protocol) ? book : readPages(book.topics).then(function () { return book; }); });
    });
    return last;
  }

  // What is looked for: the words of a query, without the quotes that people put around them.
  function words(query) {
    return query.toLowerCase().split(/[\s"\u201c\u201d]+/).filter(Boolean);
  }

  function holds(text, word) { return text.toLowerCase().includes(word); }

  // How well a topic answers: every word must occur. A title counts for more than a name, that for more than a heading,
  // that for more than text; words that stand together count for more than words apart.
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

  // The text around the first word that stands in it, with every wanted word marked.
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

  // Searches libraries, rows of [title, name, kind] as in LibList.js, below base (the way to the root, with "/").
  function run(base, libraries, wanted) {
    var books = libraries.map(function (row) {
      if (row[2] !== 'pdf') return manual(base + 'htmldocs/', row[0], row[1]);
      return { title: 'PDF', topics: [{ id: row[1], href: base + 'pdfdocs/' + encodeURIComponent(row[1]) + '.pdf', title: row[0], passages: [] }] };
    });
    return Promise.all(books).then(function (all) {
      var found = all.flatMap(function (book) {
        return book.topics.map(function (topic) { return { points: score(topic, wanted), topic: topic, book: book }; });
      });
      return found.filter(function (hit) { return hit.points; }).sort(function (a, b) { return b.points - a.points; });
    });
  }

  function row(hit, wanted) {
    var passage = best(hit.topic, wanted);
    var item = olh.element('li', {}, [olh.element('a', { href: hit.topic.href }, hit.topic.title), olh.element('span', { 'class': 'from' }, hit.book.title)]);
    if (!passage) return item;
    var place = passage.anchor && passage.heading !== hit.topic.title
      ? [olh.element('a', { href: hit.topic.href + '#' + passage.anchor }, passage.heading), ': '] : [];
    item.append(olh.element('p', {}, place.concat(excerpt(passage.text, wanted))));
    return item;
  }

  // The search form and, when there is a query, its results. go(query, scope) is called with what a person asks.
  function panel(base, libraries, query, scopes, scope, go) {
    var field = olh.element('input', { type: 'search', id: 'query', name: 'query', value: query });
    var choice = olh.element('select', { id: 'scope' }, scopes.map(function (pair) {
      return olh.element('option', Object.assign({ value: pair[1] }, pair[1] === scope ? { selected: '' } : {}), pair[0]);
    }));
    var form = olh.element('form', { 'class': 'ask', role: 'search' }, [olh.element('label', { 'for': 'query' }, ['Words to look for', field]),
      olh.element('label', { 'for': 'scope' }, ['Look in', choice]), olh.element('button', {}, 'Search')]);
    form.addEventListener('submit', function (event) { event.preventDefault(); go(field.value, choice.value); });
    var say = olh.element('p', { role: 'status' }), list = olh.element('ol', { 'class': 'list', id: 'found' }), wanted = words(query);
    if (wanted.length) {
      run(base, libraries, wanted).then(function (found) {
        found.slice(0, 100).forEach(function (hit) { list.append(row(hit, wanted)); });
        say.textContent = found.length ? found.length + (found.length === 1 ? ' place' : ' places') + ' for "' + query + '"'
          : 'Nothing holds all the words of "' + query + '". Fewer or shorter words find more.';
      });
    }
    return olh.element('section', { 'aria-label': 'Search' }, [form, say, list]);
  }

  return { panel: panel };
})();

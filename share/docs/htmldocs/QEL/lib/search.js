// Search in the page itself: over titles, topics and, where QELdata/QELSearchText.js stands beside a manual's topic
// table, the text of its topics. Needs page.js. All tables are scripts, since a page from file:// can read nothing else.
var olhSearch = (function () {
  'use strict';
  var last = Promise.resolve();

  // A manual's topics. One manual after the other, since every table calls the same three functions.
  function manual(base, title, name) {
    last = last.then(function () {
      var book = { title: title, topics: [] }, data = base + encodeURIComponent(name) + '/QELdata/';
      window.QELAddBookVar = function () {};
      window.QELAddTopic = function (row) {
        book.topics.push({ id: row[0], href: base + encodeURIComponent(name) + '/' + row[1], title: row[2], text: '' });
      };
      window.QELAddText = function (row) {
        book.topics.forEach(function (topic) { if (topic.id === row[0]) topic.text = row[1]; });
      };
      return olh.script(data + 'QELAllData.js')
        .then(function (there) { return there && olh.script(data + 'QELSearchText.js'); })
        .then(function () { return book; });
    });
    return last;
  }

  function words(query) {
    return query.toLowerCase().split(/\s+/).filter(Boolean);
  }

  // How well a topic answers: every word must occur, a title counts for more than an identifier, that for more than text.
  function score(topic, wanted) {
    var title = topic.title.toLowerCase(), id = topic.id.toLowerCase(), text = topic.text.toLowerCase(), sum = 0;
    for (var i = 0; i < wanted.length; i++) {
      var hits = Math.min(text.split(wanted[i]).length - 1, 5);
      var points = (title.includes(wanted[i]) ? 12 : 0) + (id.includes(wanted[i]) ? 6 : 0) + hits;
      if (!points) return 0;
      sum += points;
    }
    return sum;
  }

  // The text around the first word that stands in it, with every wanted word marked.
  function passage(text, wanted) {
    var low = text.toLowerCase(), at = Math.min.apply(null, wanted.map(function (word) {
      return low.indexOf(word) < 0 ? Infinity : low.indexOf(word);
    }));
    if (at === Infinity) at = 0;
    var from = at < 70 ? 0 : low.indexOf(' ', at - 70) + 1, cut = text.slice(from, from + 190);
    var pattern = wanted.map(function (word) { return word.replace(/[.*+?^${}()|[\]\\]/g, '\\$&'); }).join('|');
    var parts = cut.split(new RegExp('(' + pattern + ')', 'i')).map(function (part, i) {
      return i % 2 ? olh.element('mark', {}, part) : part;
    });
    return olh.element('p', {}, [from ? '\u2026 ' : ''].concat(parts, from + 190 < text.length ? ' \u2026' : ''));
  }

  // Searches libraries, rows of [title, name, kind] as in LibList.js, below base (the way to the root, with "/").
  function run(base, libraries, query) {
    var wanted = words(query);
    var books = libraries.map(function (row) {
      if (row[2] !== 'pdf') return manual(base + 'htmldocs/', row[0], row[1]);
      return { title: 'PDF', topics: [{ id: row[1], href: base + 'pdfdocs/' + encodeURIComponent(row[1]) + '.pdf', title: row[0], text: '' }] };
    });
    return Promise.all(books).then(function (all) {
      var found = [];
      all.forEach(function (book) {
        book.topics.forEach(function (topic) {
          var points = score(topic, wanted);
          if (points) found.push({ points: points, topic: topic, book: book });
        });
      });
      return found.sort(function (a, b) { return b.points - a.points; });
    });
  }

  function row(hit, wanted) {
    var item = olh.element('li', {}, [olh.element('a', { href: hit.topic.href }, hit.topic.title), olh.element('span', { 'class': 'from' }, hit.book.title)]);
    if (hit.topic.text) item.append(passage(hit.topic.text, wanted));
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
    var say = olh.element('p', { role: 'status' }), list = olh.element('ol', { 'class': 'list' });
    if (words(query).length) {
      run(base, libraries, query).then(function (found) {
        say.textContent = found.length ? found.length + (found.length === 1 ? ' place' : ' places') + ' for "' + query + '"'
          : 'Nothing holds all the words of "' + query + '". Fewer or shorter words find more.';
        found.slice(0, 100).forEach(function (hit) { list.append(row(hit, words(query))); });
      });
    }
    return olh.element('section', { 'aria-label': 'Search' }, [form, say, list]);
  }

  return { panel: panel };
})();

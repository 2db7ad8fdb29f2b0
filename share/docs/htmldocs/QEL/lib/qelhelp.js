// The shell around the HTML manuals: #context=NAME&query=WORDS&tab=2&src=doc searches one manual, or all of them.
// The libraries come from LibList.js, which "olh dmerge" writes; only a name that it lists is ever opened.
(function () {
  'use strict';

  function address(query, context) {
    return '#context=' + encodeURIComponent(context) + '&query=' + olh.encoded(query) + '&tab=2&src=doc';
  }

  // The manual's name in a context, which is what the program called the manual: a name, also with ".pdf" or folders
  // before it, or the path or URL of its start page.
  function nameIn(context) {
    return context.replace(/[#?].*$/, '').replace(/\/index\.htm$/, '').replace(/\/+$/, '').replace(/^.*[\/\\]/, '').replace(/\.pdf$/i, '');
  }

  function show() {
    var asked = olh.asked(), context = asked.context || '', main = document.querySelector('main');
    var all = typeof mLibraryList === 'undefined' ? [] : mLibraryList;
    var chosen = all.filter(function (row) { return row[1] === nameIn(context); }), searching = asked.tab === '2' || asked.query;
    var say = olh.element('p', { 'class': 'note', role: 'status' });
    if (!all.length) say.textContent = 'The list of manuals is missing or empty. "olh dmerge" with this documentation root writes it.';
    else if (context && !chosen.length) say.textContent = 'There is no manual "' + olh.shown(context) + '" here. All manuals are searched.';
    var scopes = [['All manuals', '']].concat(all.map(function (row) { return [row[0], row[1]]; }));
    var search = olhSearch.panel('../', chosen.length ? chosen : all, asked.query || '', scopes, chosen.length ? chosen[0][1] : '',
      function (query, scope) { location.hash = address(query, scope); });
    var list = olh.element('ul', { 'class': 'list' }, all.map(function (row) {
      return olh.element('li', {}, olh.element('a', { href: encodeURIComponent(row[1]) + '/index.htm' }, row[0]));
    }));
    var back = document.querySelector('.trail ol');
    back.replaceChildren.apply(back, [back.firstElementChild].concat(chosen.map(function (row) {
      return olh.element('li', {}, olh.element('a', { href: encodeURIComponent(row[1]) + '/index.htm' }, row[0]));
    })));
    var title = !searching ? 'Manuals' : chosen.length ? 'Search in ' + chosen[0][0] : 'Search in all manuals';
    main.replaceChildren(olh.element('h1', {}, title), say, search, olh.element('h2', {}, 'All manuals'), list);
    document.title = title;
    if (asked.tab === '2' && !asked.query) document.getElementById('query').focus();
  }

  addEventListener('DOMContentLoaded', show);
  addEventListener('hashchange', show);
})();

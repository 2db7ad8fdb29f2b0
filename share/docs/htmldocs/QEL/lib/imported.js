// The start page of a manual that "olh import" has brought. #context=NAME&topic=TOPIC goes on to the page and place of the
// topic; without a topic the page shows the contents. Needs page.js.
(function () {
  'use strict';
  var places = new Map(), table, single = { 'true': 'true', popup: 'popup' }[olh.asked().single];
  var here = new URL('.', location.href).href, canBeAlone = single && location.protocol !== 'file:';
  if (single) document.documentElement.dataset.single = single;

  // The topic table, QELdata/QELAllData.js, is made of calls of these two. Of equal names the first one counts.
  window.QELAddBookVar = function () {};
  window.QELAddTopic = function (row) {
    var name = olh.topicName(row[0]);
    if (!places.has(name)) places.set(name, row[1]);
  };

  // A topic alone stays so when it is loaded again or its address is passed on: the page in the frame is in the address.
  function keep(address) {
    if (address.startsWith(here)) history.replaceState(null, '', '?single=' + single + '#page=' + encodeURIComponent(address.slice(here.length)));
  }

  function isOwnPage(place) { return olh.element('a', { href: place }).href.startsWith(here + 'pages/'); }

  // A topic alone: its page in a frame, with a style that hides what its generator put around the text. From file:// no page
  // may reach into another one: there the page comes whole.
  function showAlone(place) {
    var frame = olh.element('iframe', { 'class': 'alone', title: 'The topic', src: place });
    frame.addEventListener('load', function () {
      var inner = frame.contentDocument;
      if (!inner) return;
      keep(inner.location.href);
      var style = inner.createElement('link');
      style.rel = 'stylesheet';
      style.href = new URL('../QEL/lib/imported_alone.css', location.href).href;
      style.onload = function () { if (inner.location.hash) inner.location.replace(inner.location.href); };
      inner.head.append(style);
      document.title = inner.title || document.title;
    });
    document.body.replaceChildren(frame);
  }

  // Goes to the topic that the address names. The address of the request is replaced, so that "back" leaves the manual.
  function follow() {
    var wanted = olh.asked().topic, page = olh.asked().page, say = document.getElementById('missing');
    if (!say) return;  // a topic is shown alone in its place
    say.textContent = '';
    if (canBeAlone && page && isOwnPage(page)) return showAlone(page);
    if (!wanted) return;
    table = table || olh.script('QELdata/QELAllData.js');
    table.then(function (isThere) {
      var place = places.get(olh.topicName(wanted));
      if (place) return canBeAlone ? showAlone(place) : location.replace(place);
      say.textContent = isThere ? 'There is no topic "' + olh.shown(wanted) + '" in this manual. Its contents:'
        : 'The list of topics is missing. "olh import" writes it.';
    });
  }

  function frame() {
    var manual = olh.decoded(location.pathname).split('/').slice(-2)[0];
    document.body.prepend(olh.element('a', { 'class': 'skip', href: '#topic' }, 'Skip to the contents'));
    document.querySelector('main').before(olh.element('nav', { 'class': 'trail', 'aria-label': 'Breadcrumbs' },
      olh.element('ol', {}, olh.element('li', {}, olh.element('a', { href: '../../index.html' }, 'All documentation')))));
    olh.toBar(olh.searchField('Search this manual', function (words) {
      return '../qelhelp.htm#context=' + encodeURIComponent(manual) + '&query=' + words + '&tab=2&src=doc';
    }, { base: '../../', names: [manual] }));
    follow();
  }

  // What is chosen from the contents is alone, too.
  addEventListener('click', function (event) {
    var link = event.target.closest('nav.contents a');
    if (!link || !canBeAlone || event.ctrlKey || event.metaKey || event.shiftKey) return;
    event.preventDefault();
    showAlone(link.getAttribute('href'));
  });
  addEventListener('DOMContentLoaded', frame);
  addEventListener('hashchange', follow);
})();

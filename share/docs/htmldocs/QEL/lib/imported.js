// The start page of a manual that "olh import" has brought. #context=NAME&topic=TOPIC goes on to the page and place of the
// topic; without a topic the page shows the contents. Needs page.js.
(function () {
  'use strict';
  var places = new Map(), table, single = olh.asked().single;
  if (single === 'true' || single === 'popup') document.documentElement.dataset.single = single;

  // The topic table, QELdata/QELAllData.js, is made of calls of these two. Of equal names the first one counts.
  window.QELAddBookVar = function () {};
  window.QELAddTopic = function (row) {
    var name = olh.topicName(row[0]);
    if (!places.has(name)) places.set(name, row[1]);
  };

  // Goes to the topic that the address names. The address of the request is replaced, so that "back" leaves the manual.
  function follow() {
    var wanted = olh.asked().topic, say = document.getElementById('missing');
    say.textContent = '';
    if (!wanted) return;
    table = table || olh.script('QELdata/QELAllData.js');
    table.then(function (isThere) {
      var place = places.get(olh.topicName(wanted));
      if (place) return location.replace(place);
      say.textContent = isThere ? 'There is no topic "' + olh.shown(wanted) + '" in this manual. This is what it holds:'
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

  addEventListener('DOMContentLoaded', frame);
  addEventListener('hashchange', follow);
})();

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation>Закрыть сообщение</translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation>Повторить: %1</translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation>Установить: %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Отменить: %1</translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation>Подождите</translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>Не удаётся создать папку %1.</translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>Нет связи с %1, или это не сервер карт.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>На %1 не указана пригодная версия карт.</translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation>Сервер не отдаёт %1.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation>Файл %1 на сервере повреждён или не содержит регионов; остаётся прежний.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>Не удаётся записать %1.</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>Не удаётся создать папку %1.</translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation>Не удаётся записать файл блокировки %1.</translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation>С этими картами работает другая программа (процесс %1). Повторите попытку, когда она закончит.</translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation>Прерванное обновление завершено: используются новые карты.</translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation>Прерванное обновление завершить не удалось: используются старые карты.</translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation>Прерванный возврат к старым картам теперь завершён.</translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation>Вернуться к старым картам не удалось: используются новые карты.</translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation>Прерванное удаление завершено.</translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation>Голосовые данные, отложенные при удалении, снова на месте.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation>Замена карт прервалась, и её не удаётся завершить.</translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation>То, что мешало, теперь называется %1.</translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation>Карты загружаются в память или изменяются. Повторите попытку позже.</translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation>Не удалось завершить замену карт: %1</translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation>Не удалось заменить карты, всё осталось как было: %1</translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation>Оболочка переместила не все папки; остальные перемещены без неё.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>«%1» не может стоять после имени набора данных.</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Замена карт прервалась. Сначала перезапустите программу.</translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation>Сервер не отвечает %1 с; попытка прекращена.</translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation>Идёт обновление.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>Нет резервной копии, к которой можно вернуться.</translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation>Есть незавершённые установки (%1).</translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation>С тех пор установлены регионы, которых нет в резервной копии: %1.</translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation>Не удаётся записать указатель городов и состояние обновления.</translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation>Прошлое изменение карт прервалось; сначала его нужно исправить.</translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation>В имени папки %1 есть символы, недопустимые в командах обновления.</translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation>Каталога пока нет.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation>Ещё не удалена резервная копия прошлого обновления.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>Не удаётся записать состояние обновления.</translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation>В версии %1 нет установленных регионов: %2.</translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation>Не удаётся записать подготовленные карты.</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>%n карта внутри</numerusform>
            <numerusform>%n карты внутри</numerusform>
            <numerusform>%n карт внутри</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation>Выберите карту</translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation>Здесь показываются её размер и возможные действия.</translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation>Нет сети</translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation>Wi‑Fi или кабель</translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation>Мобильная сеть</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>Свободно %1</translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation>Диск больше не принимает данные. Он заполнен?</translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation>Отсутствует %1.</translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation>Мешает %1, переименовать не удаётся.</translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation>Ответ %1: код состояния %2.</translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation>Файл %1 слишком велик.</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Прервано.</translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation>%1 не отвечает %2 с.</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>Нет связи с %1: %2.</translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation>%1 сжимается при передаче, хотя не должен.</translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation>Файл %1 изменился во время чтения.</translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation>Передача %1 оборвалась: %2.</translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation>%1 передаёт меньше байтов, чем заявлено.</translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation>%1 передаёт больше байтов, чем заявлено.</translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation>%1 передаёт не ту часть, что запрошена.</translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation>Установленные карты</translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation>На устройстве свободно %1</translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>Обновить: %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Удалить: %1</translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation>Нет установленных карт</translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation>Установленные карты работают без сети. Выберите нужные регионы.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Выбрать карты</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation>Карты</translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation>Открываем карты</translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation>Не удаётся открыть карты</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Повторить</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Установлено</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Загрузки</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation>Удалено: %1. Освобождено %2.</translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation>Сервер не отвечает. Повторите попытку позже.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation>Прежде чем искать новые карты, дождитесь конца загрузок или отмените их.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Нет подключения к сети.</translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation>Список карт актуален (версия %1).</translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation>На сервере есть более новые карты (версия %1). Установленные остаются в версии %2.</translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation>Все карты обновляются. До завершения нельзя установить или удалить другие карты.</translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation>Обновление всех карт не завершено. Продолжите его или откажитесь от него, прежде чем устанавливать или удалять карты.</translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation>Старые карты от прошлого обновления ещё хранятся. Сначала удалите их.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Нет подключения к сети.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Загрузки ждут Wi‑Fi.</translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation>Карты уже изменяются.</translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation>Карты ещё не открыты.</translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation>Загружается список карт. Дождитесь окончания.</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation>Дождитесь окончания загрузок или отмените их, прежде чем обновлять все карты.</translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation>Старые карты удаляются.</translation>
    </message>
</context>
<context>
    <name>NavButton</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>OldMapsCard</name>
    <message>
        <source>Old maps</source>
        <translation>Старые карты</translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation>Сохранённая версия</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Размер</translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation>Подсчитывается</translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation>Сохранить старые карты</translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation>Вернуться к версии %1</translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation>Удалить старые карты</translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation>Удалить резервную копию</translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation>Вернуться к версии %1?</translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation>Снова будут использоваться старые карты. Новые останутся на устройстве, пока вы их не удалите.</translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation>Эти карты установлены позже, и среди старых их нет: %1.</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Вернуться</translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation>Удалить старые карты?</translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation>Освободится %1.</translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation>После этого вернуться к версии %1 будет нельзя.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation>Удаляется</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>Назад</translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation>Не удаётся записать в папки %1 и %2.</translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation>Не удаётся скопировать указатель городов и config.cfg к новым картам.</translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation>Не удаётся удалить файл %1.</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>Не удаётся записать состояние обновления.</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation>Ход выполнения пока неизвестен</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>RegionDetails</name>
    <message>
        <source>Download</source>
        <translation>Размер загрузки</translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation>Займёт после установки</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>На устройстве</translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation>Отменить загрузку</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Повторить</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Обновить</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Установить</translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation>В каталоге нет региона «%1».</translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation>Регион «%1» уже устанавливается.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>В каталоге нет пригодного адреса для «%1».</translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation>Для «%1» нужно %2, а свободно только %3.</translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation>Не удалось записать список ожидающих установок.</translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation>Регион «%1» не устанавливается.</translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation>Файлы региона «%1» уже размещаются.</translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation>Регион «%1» не установлен.</translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation>Регион «%1» устанавливается; сначала отмените установку.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>В архиве региона «%1» нет фрагментов карты.</translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation>После установки не хватает файлов региона «%1».</translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation>В каталоге больше нет региона «%1».</translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation>Не удалось внести «%1»: файл содержимого недоступен для записи.</translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation>Сервер прислал %1 байт для региона «%2», а в каталоге указано %3; ничего не изменено. Возможно, мешает страница входа в сеть или каталог устарел?</translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation>Архив региона «%1» повреждён или не распаковывается; ничего не изменено.</translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation>Не удалось разместить файлы региона «%1». Возможно, диск заполнен.</translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation>Сервер отказался передать архив региона «%1».</translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation>Не удалось загрузить архив региона «%1»: сервер недоступен или архива на нём нет.</translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation>Последняя установка %1 не завершилась ошибкой.</translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation>Установлено</translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation>На устройстве: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>%n карта внутри</numerusform>
            <numerusform>%n карты внутри</numerusform>
            <numerusform>%n карт внутри</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 из %2</translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation>Приостановлено вами</translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation>Ожидание Wi‑Fi</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>Не установлено</translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation>В очереди</translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation>Загрузка, %1</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Загрузка</translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation>Загрузка: %1 %</translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation>Загрузка: %1 %, осталось %2</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>Распаковка</translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation>Распаковка: %1 %</translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation>Размещение файлов</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>Завершение</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>Установлено</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Отменено</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 мин</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 ч %2 мин</translation>
    </message>
    <message>
        <source>Waiting for a network</source>
        <translation>Ожидание сети</translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation>Карты для загрузки</translation>
    </message>
    <message>
        <source>All maps</source>
        <translation>Все карты</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Проверить карты</translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation>Поиск по всем картам</translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation>Карты с таким названием нет</translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation>Введите меньше букв или название на другом языке.</translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation>Список карт пока пуст</translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation>Сначала получите список карт с сервера. Он небольшой; сами карты загружаются по одной, по вашему выбору.</translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation>Получить список</translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation>Всё: %1</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Подробнее</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Установить</translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation>Файл %1 зашифрован.</translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation>%1: не хватает памяти.</translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation>Не удаётся просмотреть %1: сервер отдаёт файлы только целиком.</translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation>Файл %1 повреждён или не является архивом: %2.</translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation>В %1 не указаны размеры файлов.</translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation>В %1 есть файл, который нельзя распаковывать: «%2».</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation>Удалить «%1»?</translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation>Освободится %1 (%2).</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n файл</numerusform>
            <numerusform>%n файла</numerusform>
            <numerusform>%n файлов</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation>Остаётся %1 (%2): это нужно другим установленным картам.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation>Подсчёт освобождаемого места</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>Очистить поиск</translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation>Сервер карт</translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation>Адрес, с которого загружаются карты.</translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation>Это не HTTP-адрес.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>Использовать</translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation>В %1 подключена другая файловая система; удалить папку нельзя.</translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation>Не удаётся переместить %1 в безопасное место.</translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>As the system</source>
        <translation>Как в системе</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Светлое</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Тёмное</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Выключен</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Ошибки</translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation>Ошибки и предупреждения</translation>
    </message>
    <message>
        <source>Information too</source>
        <translation>Также сведения</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>Всё</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Неизвестно</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Сеть</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>Нет сети</translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation>Подключение по Wi‑Fi или кабелю</translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation>Подключение по мобильной сети</translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation>Задано вами</translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation>По данным системы</translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation>Система не сообщает</translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation>Загружать по мобильной сети</translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation>Может быть платно. Если выключено, загрузки ждут Wi‑Fi.</translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation>Задать сеть вручную</translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation>Если система её не определяет.</translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation>Сеть есть</translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation>Это Wi‑Fi или кабель</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>На устройстве</translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation>Установленные карты</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>%n карта</numerusform>
            <numerusform>%n карты</numerusform>
            <numerusform>%n карт</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Свободное место</translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation>Версия карт</translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation>Версия объектов карты</translation>
    </message>
    <message>
        <source>City index</source>
        <translation>Указатель городов</translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>%n пакет городов</numerusform>
            <numerusform>%n пакета городов</numerusform>
            <numerusform>%n пакетов городов</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Папка</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>Сервер</translation>
    </message>
    <message>
        <source>Content server</source>
        <translation>Сервер карт</translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation>Список карт</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>%n карта на выбор</numerusform>
            <numerusform>%n карты на выбор</numerusform>
            <numerusform>%n карт на выбор</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation>На сервере есть более новые карты: версия %1</translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation>Остановить</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Проверить карты</translation>
    </message>
    <message>
        <source>This app</source>
        <translation>Приложение</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Оформление</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Журнал</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Версия</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Обновление всех карт</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>Выполняется</translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation>Версия %1 есть на устройстве</translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation>Подготавливается версия %1</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>Более новых карт не найдено</translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>Замена карт прервалась. Сначала перезапустите программу.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>«%1» не может стоять после имени набора данных.</translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation>В пути %1 есть пробел или другой символ, недопустимый при обновлении. Переместите карты в папку с простым именем.</translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation>Подготовленных карт нет.</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>Нет резервной копии, к которой можно вернуться.</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation>Ещё не удалена резервная копия прошлого обновления (%1). Сначала удалите её или вернитесь к ней.</translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation>Готовится другое обновление (%1). Сначала откажитесь от него.</translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation>Папка %1 отсутствует.</translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation>%1 — ссылка или файл, а должна быть папка.</translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation>В %1 подключена другая файловая система; это должна быть папка окружающей файловой системы.</translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation>%1 мешает голосовым данным.</translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation>Папка %1 защищена от записи.</translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation>В %1 не осталось места.</translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation>Файл %1 отсутствует или повреждён.</translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation>Файл %1 отсутствует, повреждён или не содержит регионов.</translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>Не удаётся записать %1 (%2).</translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation>Не удаётся прочитать запись %1.</translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation>Запись %1 повреждена или сделана не этой программой.</translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation>Запись %1 сделана более новой версией этой программы.</translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation>Запись %1 повреждена.</translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation>Не удаётся удалить %1 (%2).</translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation>Нет сети. Загрузки продолжатся, как только она появится.</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>Загрузки ждут Wi‑Fi.</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Загрузки</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Продолжить</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Пауза</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>По мобильной сети</translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation>Повторить: %1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Отменить: %1</translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation>Загрузок нет</translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation>Здесь видны карты, которые вы устанавливаете, пока они не будут готовы.</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>Выбрать карты</translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation>Убрать из списка: %1</translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation>Убрать завершённые загрузки</translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation>На сервере есть более новые карты: версия %1.</translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation>Показать обновление</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Обновить все карты</translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>На %1 не указана пригодная версия карт.</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>Не удаётся записать %1.</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation>Файл %1 на сервере повреждён или не содержит регионов.</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>В каталоге нет пригодного адреса для «%1».</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>Прервано.</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>В архиве региона «%1» нет фрагментов карты.</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation>Обновление ожидает</translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation>Возврат к старым картам</translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation>Карты обновляются</translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation>Все карты обновлены</translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation>Обновление не удалось завершить</translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation>Новые карты готовы</translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation>Обновление не завершено</translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation>Есть более новые карты</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>Более новых карт не найдено</translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation>Нет сети, которую можно использовать. Обновление продолжится само, как только она появится.</translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation>Запрос версии у сервера</translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation>Загрузка списка карт версии %1</translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation>Подготовка версии %1</translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation>Подготовка: %1</translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation>Переход на версию %1</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Подождите</translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation>Версия %1 заменила версию %2.</translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation>Карты самой новой версии.</translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation>В версии %1 больше нет этих установленных карт:</translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation>Карты версии %1 есть на устройстве. Их можно использовать без загрузки.</translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation>Обновление до версии %1 продолжится с того же места. До завершения используемые карты не меняются.</translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation>Все установленные карты обновляются вместе. Новые загружаются рядом с используемыми, к которым потом можно вернуться.</translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation>Есть ли они, сообщит сервер.</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>Обновление всех карт</translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation>Если продолжить без них, они останутся только среди старых карт.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 из %2</translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation>Продолжить без них</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Повторить</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>Обновить все карты</translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation>Использовать версию %1</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Продолжить</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>По мобильной сети</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Остановить</translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation>Удалить новые карты</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>Отказаться</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>Проверить карты</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Версии</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>Используется</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Нет</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>Новая</translation>
    </message>
    <message>
        <source>On the server</source>
        <translation>На сервере</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Свободное место</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Неизвестно</translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation>Удалить новые карты?</translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation>Отказаться от обновления?</translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation>Загруженное из версии %1 будет удалено. Используемые карты не изменятся.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation>Для обновления в %2 нужно до %1 сверх используемых карт, а свободно только %3.</translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>Нет связи с %1, или это не сервер карт.</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>На %1 не указана пригодная версия карт.</translation>
    </message>
</context>
</TS>

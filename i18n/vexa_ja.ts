<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation>メッセージを閉じる</translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation>%1を再試行</translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation>%1をインストール</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>%1をキャンセル</translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation>お待ちください</translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>フォルダー %1 を作成できません。</translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>%1 に接続できないか、地図サーバーではありません。</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 に使用できる地図のバージョンがありません。</translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation>サーバーから %1 を取得できません。</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation>サーバーの %1 は破損しているか、地域が含まれていません。以前のものを引き続き使用します。</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>%1 に書き込めません。</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>フォルダー %1 を作成できません。</translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation>ロックファイル %1 に書き込めません。</translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation>別のプログラム（プロセス %1）がこの地図データを処理しています。終了してからもう一度お試しください。</translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation>中断された更新を完了しました。新しい地図を使用しています。</translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation>中断された更新を完了できませんでした。以前の地図を使用しています。</translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation>中断されていた以前の地図への復元を完了しました。</translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation>以前の地図への復元を完了できませんでした。新しい地図を使用しています。</translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation>中断された削除を完了しました。</translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation>削除の際に退避した音声データを元の場所に戻しました。</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation>地図データの入れ替えが中断され、完了できません。</translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation>妨げになっていたものは %1 という名前に変更されました。</translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation>地図データの読み込みまたは変更が行われています。終了してからもう一度お試しください。</translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation>地図データの入れ替えを完了できませんでした：%1</translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation>地図データを入れ替えられませんでした。元の状態のままです：%1</translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation>シェルが一部のフォルダーを移動しなかったため、残りは直接移動しました。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>「%1」はデータセット名の末尾に使用できません。</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>地図データの入れ替えが中断されました。先にプログラムを再起動してください。</translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation>サーバーから%1秒間応答がないため、中止します。</translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation>更新中です。</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>復元できるバックアップがありません。</translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation>保留中のインストールがあります（%1）。</translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation>その後インストールされた地域はバックアップに含まれていません：%1。</translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation>都市索引と更新の状態を保存できません。</translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation>以前の地図の変更が中断されています。先に修復する必要があります。</translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation>フォルダー %1 の名前に、更新のコマンドで使用できない文字が含まれています。</translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation>カタログがまだありません。</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation>以前の更新のバックアップが残っています。</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>更新の状態を保存できません。</translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation>バージョン %1 には、インストール済みの次の地域がありません：%2。</translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation>準備した地図を保存できません。</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>%n個の地図を含む</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation>地図を選択</translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation>サイズと可能な操作がここに表示されます。</translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation>ネットワークなし</translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation>Wi‑Fi または有線</translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation>モバイル回線</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>空き容量：%1</translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation>ディスクにこれ以上書き込めません。空き容量がないのではありませんか？</translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation>%1 がありません。</translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation>%1 が妨げになっていますが、名前を変更できません。</translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation>%1 がステータス %2 を返しました。</translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation>%1 は大きすぎます。</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>中断しました。</translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation>%1 から%2秒間応答がありません。</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>%1 に接続できません：%2。</translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation>%1 が転送中に圧縮されています。圧縮は許可されていません。</translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation>%1 が読み取り中に変更されました。</translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation>%1 の転送が途切れました：%2。</translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation>%1 のデータが宣言されたバイト数より少ないです。</translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation>%1 のデータが宣言されたバイト数より多いです。</translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation>%1 が要求と異なる部分を返しました。</translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation>インストール済みの地図</translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation>このデバイスの空き容量：%1</translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>%1を更新</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1を削除</translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation>地図がインストールされていません</translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation>インストールした地図はネットワークなしで使えます。必要な地域を選んでください。</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>地図を選択</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation>地図</translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation>地図を開いています</translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation>地図を開けません</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>再試行</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>導入済み</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>転送</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation>%1を削除しました。%2の空きが増えました。</translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation>サーバーが応答しません。後でもう一度お試しください。</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation>新しい地図を確認する前に、転送の完了を待つか、転送をキャンセルしてください。</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>ネットワークに接続されていません。</translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation>地図の一覧は最新です（バージョン %1）。</translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation>サーバーに新しい地図（バージョン %1）があります。インストール済みの地図はバージョン %2 のままです。</translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation>すべての地図を更新しています。終わるまで、ほかの地図のインストールや削除はできません。</translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation>すべての地図の更新が終わっていません。地図をインストールまたは削除する前に、更新を続けるか中止してください。</translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation>前回の更新の古い地図がまだ残っています。先に削除してください。</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>ネットワークに接続されていません。</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>ダウンロードは Wi‑Fi 接続を待っています。</translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation>地図はすでに変更中です。</translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation>地図はまだ開かれていません。</translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation>地図の一覧を取得しています。終わるまでお待ちください。</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation>すべての地図を更新する前に、転送が終わるのを待つか、キャンセルしてください。</translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation>以前の地図を削除しています。</translation>
    </message>
</context>
<context>
    <name>NavButton</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
</context>
<context>
    <name>OldMapsCard</name>
    <message>
        <source>Old maps</source>
        <translation>古い地図</translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation>保存されているバージョン</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>サイズ</translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation>計測中</translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation>古い地図を残す</translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation>バージョン %1 に戻す</translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation>古い地図を削除</translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation>バックアップを削除</translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation>バージョン %1 に戻しますか？</translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation>古い地図をふたたび使います。新しい地図は、削除するまでこの端末に残ります。</translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation>次の地図はその後にインストールされたため、古い地図には含まれません：%1。</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation>古い地図を削除しますか？</translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation>%1 の空きができます。</translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation>その後、バージョン %1 には戻せません。</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation>削除中</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>戻る</translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation>フォルダー %1 と %2 に書き込めません。</translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation>都市索引と config.cfg を新しい地図にコピーできません。</translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation>ファイル %1 を削除できません。</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>更新の状態を保存できません。</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation>進行状況はまだ不明です</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1%</translation>
    </message>
</context>
<context>
    <name>RegionDetails</name>
    <message>
        <source>Download</source>
        <translation>ダウンロードサイズ</translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation>インストール後のサイズ</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>このデバイス</translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation>ダウンロードをキャンセル</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>再試行</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>インストール</translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation>カタログに地域「%1」がありません。</translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation>「%1」はすでにインストール中です。</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>カタログに「%1」の有効なアドレスがありません。</translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation>「%1」には %2 必要ですが、空き容量は %3 しかありません。</translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation>保留中のインストールの一覧を保存できませんでした。</translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation>「%1」はインストール中ではありません。</translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation>「%1」のファイルはすでに配置中です。</translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation>「%1」はインストールされていません。</translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation>「%1」はインストール中です。先にキャンセルしてください。</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>「%1」のアーカイブに地図タイルがありません。</translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation>インストール後に「%1」のファイルが不足しています。</translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation>カタログに地域「%1」はもうありません。</translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation>「%1」を記録できませんでした。コンテンツファイルに書き込めません。</translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation>サーバーは「%2」に %1 バイトを送信しましたが、カタログでは %3 バイトです。何も変更されていません。途中にログインページがあるか、カタログが古くなっていませんか？</translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation>「%1」のアーカイブは破損しているか、展開できませんでした。何も変更されていません。</translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation>「%1」のファイルを配置できませんでした。ディスクの空き容量を確認してください。</translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation>サーバーが「%1」のアーカイブの送信を拒否しました。</translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation>「%1」のアーカイブをダウンロードできませんでした。サーバーに接続できないか、サーバーにアーカイブがありません。</translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation>%1の前回のインストールは失敗していません。</translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation>インストール済み</translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation>このデバイス上：%1</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>%n個の地図を含む</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1、%2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation>一時停止中</translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation>Wi‑Fi を待っています</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>未インストール</translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation>順番を待っています</translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation>ダウンロード中、%1</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>ダウンロード中</translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation>ダウンロード中 %1%</translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation>ダウンロード中 %1%、残り%2</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>展開中</translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation>展開中 %1%</translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation>ファイルを配置しています</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>仕上げ中</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>インストール済み</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>キャンセル済み</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1秒</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1分</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1時間%2分</translation>
    </message>
    <message>
        <source>Waiting for a network</source>
        <translation>ネットワークを待っています</translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation>ダウンロードできる地図</translation>
    </message>
    <message>
        <source>All maps</source>
        <translation>すべての地図</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>新しい地図を確認</translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation>すべての地図を検索</translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation>この名前の地図はありません</translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation>文字数を減らすか、別の言語の名前をお試しください。</translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation>地図の一覧がまだありません</translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation>まずサーバーから地図の一覧を取得してください。一覧は小さく、地図そのものは選んだものだけが1つずつダウンロードされます。</translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation>一覧を取得</translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation>%1全体</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>詳細</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>インストール</translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation>%1 は暗号化されています。</translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation>%1：メモリが足りません。</translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation>%1 の内容を一覧できません。サーバーがファイル全体しか送信しません。</translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation>%1 は破損しているか、アーカイブではありません：%2。</translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation>%1 にファイルのサイズが記録されていません。</translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation>%1 に展開が許可されていないファイルがあります：「%2」。</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation>%1を削除しますか？</translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation>%1（%2）の空きができます。</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n個のファイル</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation>%1（%2）は、ほかのインストール済みの地図に必要なため残ります。</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation>空く容量を調べています</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>検索をクリア</translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation>コンテンツサーバー</translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation>地図のダウンロード元のアドレスです。</translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation>HTTP アドレスではありません。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>このサーバーを使用</translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation>%1 に別のファイルシステムがマウントされているため、削除できません。</translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation>%1 を安全な場所に移動できません。</translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>As the system</source>
        <translation>システムに合わせる</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>ライト</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>ダーク</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>オフ</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>エラー</translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation>エラーと警告</translation>
    </message>
    <message>
        <source>Information too</source>
        <translation>情報も含む</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>すべて</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>ネットワーク</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>ネットワークなし</translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation>Wi‑Fi または有線で接続中</translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation>モバイル回線で接続中</translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation>手動で設定</translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation>システムの情報</translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation>システムからの情報なし</translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation>モバイル回線でダウンロード</translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation>料金がかかることがあります。オフの場合、ダウンロードは Wi‑Fi 接続を待ちます。</translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation>ネットワークを手動で設定</translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation>システムが状態を把握できない場合に使います。</translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation>ネットワークあり</translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation>Wi‑Fi または有線</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>このデバイス</translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation>インストール済みの地図</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>%n個の地図</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>空き容量</translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation>地図のバージョン</translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation>地図オブジェクトのバージョン</translation>
    </message>
    <message>
        <source>City index</source>
        <translation>都市索引</translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>%n個の都市パッケージ</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>フォルダー</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>サーバー</translation>
    </message>
    <message>
        <source>Content server</source>
        <translation>コンテンツサーバー</translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation>地図の一覧</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>%n個の地図から選択可能</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation>サーバーに新しい地図があります：バージョン %1</translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation>確認を中止</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>新しい地図を確認</translation>
    </message>
    <message>
        <source>This app</source>
        <translation>このアプリ</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外観</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>ログ</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>バージョン</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>すべての地図の更新</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>進行中</translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation>バージョン %1 がこの端末にあります</translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation>バージョン %1 を準備中</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>新しい地図は見つかっていません</translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>地図データの入れ替えが中断されました。先にプログラムを再起動してください。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>「%1」はデータセット名の末尾に使用できません。</translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation>パス %1 に、空白など更新で扱えない文字が含まれています。地図データを単純な名前のフォルダーに移動してください。</translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation>準備済みの地図データがありません。</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>復元できるバックアップがありません。</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation>以前の更新のバックアップが残っています（%1）。先に削除するか、復元してください。</translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation>別の更新を準備中です（%1）。先に中止してください。</translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation>フォルダー %1 がありません。</translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation>%1 はリンクまたはファイルです。フォルダーである必要があります。</translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation>%1 に別のファイルシステムがマウントされています。周囲と同じファイルシステムのフォルダーである必要があります。</translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation>%1 が音声データの妨げになっています。</translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation>フォルダー %1 は書き込み禁止です。</translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation>%1 に空き容量がありません。</translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation>%1 がないか、破損しています。</translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation>%1 がないか、破損しているか、地域が含まれていません。</translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>%1 に書き込めません（%2）。</translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation>記録 %1 を読み取れません。</translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation>記録 %1 は破損しているか、このプログラムが書いたものではありません。</translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation>記録 %1 はこのプログラムの新しいバージョンで書かれています。</translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation>記録 %1 は破損しています。</translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation>%1 を削除できません（%2）。</translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation>ネットワークがありません。接続されるとダウンロードを再開します。</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>ダウンロードは Wi‑Fi 接続を待っています。</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>転送</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>再開</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>一時停止</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>モバイル回線を使用</translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation>%1を再試行</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>%1をキャンセル</translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation>転送中のものはありません</translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation>インストールする地図は、準備ができるまでここに表示されます。</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>地図を選択</translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation>%1をリストから削除</translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation>終了した転送を消去</translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation>サーバーに新しい地図があります：バージョン %1。</translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation>更新を表示</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>すべての地図を更新</translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 に使用できる地図のバージョンがありません。</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>%1 に書き込めません。</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation>サーバーの %1 は破損しているか、地域が含まれていません。</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>カタログに「%1」の有効なアドレスがありません。</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>中断しました。</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>「%1」のアーカイブに地図タイルがありません。</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation>更新は待機中です</translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation>古い地図に戻しています</translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation>地図を更新しています</translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation>すべての地図を更新しました</translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation>更新を完了できませんでした</translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation>新しい地図の準備ができています</translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation>更新が終わっていません</translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation>新しい地図があります</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>新しい地図は見つかっていません</translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation>使用できるネットワークがありません。使えるようになると自動的に続きます。</translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation>サーバーにバージョンを確認しています</translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation>バージョン %1 の地図の一覧を取得しています</translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation>バージョン %1 を準備しています</translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation>%1 を準備しています</translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation>バージョン %1 に切り替えています</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>お待ちください</translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation>バージョン %2 がバージョン %1 に置き換わりました。</translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation>地図は最新バージョンです。</translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation>バージョン %1 には、インストール済みの次の地図がありません：</translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation>バージョン %1 の地図はこの端末にあります。ダウンロードせずに使えます。</translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation>バージョン %1 への更新は、止まったところから続きます。終わるまで、使用中の地図は変わりません。</translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation>インストール済みの地図をまとめて更新します。新しい地図は使用中の地図とは別にダウンロードされ、あとで元の地図に戻せます。</translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation>あるかどうかはサーバーに問い合わせます。</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>すべての地図の更新</translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation>これらなしで続けると、古い地図にだけ残ります。</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation>これらなしで続ける</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>再試行</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>すべての地図を更新</translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation>バージョン %1 を使う</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>続ける</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>モバイル回線を使用</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation>新しい地図を削除</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>新しい地図を確認</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>バージョン</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>使用中</translation>
    </message>
    <message>
        <source>None</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>新しいもの</translation>
    </message>
    <message>
        <source>On the server</source>
        <translation>サーバー上</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>空き容量</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation>新しい地図を削除しますか？</translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation>更新を中止しますか？</translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation>バージョン %1 でダウンロードしたものを削除します。使用中の地図は変わりません。</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation>更新には、使用中の地図のほかに %2 に最大 %1 必要ですが、空き容量は %3 しかありません。</translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>%1 に接続できないか、地図サーバーではありません。</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 に使用できる地図のバージョンがありません。</translation>
    </message>
</context>
</TS>

#include "engine/embedded/words/LanguageData.h"

namespace vorq::gateway {

constexpr LanguageData kFrench{
    .locale = "fr",
    .stemmer = "french",
    .stopWords =

        "a ai ainsi alors après as au aucun aucune aussi autre autres aux avant avec avoir avait "
        "avaient avez avons c car ce ceci cela celle celles celui ces cet cette ceux chaque chez "
        "ci comme comment d dans de depuis des devant dès deux donc dont du elle elles en encore "
        "entre es est et étaient était étant été être eu eux faut il ils j je jusqu jusque l la "
        "le les leur leurs lors lorsque lui là m ma mais me mes même mêmes moi mon n ne ni non "
        "nos notre nous on ont or ou où par parce pas pendant peu peut peuvent plus plusieurs "
        "pour pourquoi près puis qu quand que quel quelle quelles quels qui quoi s sa sans se "
        "selon ses si sinon soit son sont sous sur t ta tandis te tes toi ton tous tout toute "
        "toutes très tu un une vers voici voilà vos votre vous y peux pouvez pouvons pouvait "
        "pouvaient pourrait pourra dois doit devez devons doivent devrait veux veut voulez "
        "est-ce quelqu sera seront soient faudra sommes êtes suis fut furent mien mienne miens "
        "tien tienne sien sienne siens",
    .calendar = "janvier février mars avril mai juin juillet août septembre octobre novembre "
                "décembre lundi mardi mercredi jeudi vendredi samedi dimanche printemps été "
                "automne hiver",
    .determiners = "le la les l un une des du de d au aux ce cet cette ces mon ma mes son sa ses "
                   "notre nos votre vos leur leurs chaque quelques plusieurs aucun aucune",
    .prepositions = "en sans pour avec sur sous dans par chez vers entre",
    .paleWords =

        "connais connaît sais sait veux veut dois doit viens prends prend tiens tient mets met "
        "crois croit sommes suis êtes reste restent cuire laisse libéré an ans année années jour "
        "jours semaine semaines mois heure heures minute minutes fois chose choses temps partie "
        "exemple manière façon tiers moitié fait faire faites dit dire trois quatre cinq six "
        "sept huit neuf dix vingt cent mille million bonjour merci va vont vient passe passer "
        "premier première dernier dernière nouveau nouvelle grand grande petit petite bon bonne "
        "mieux bien beaucoup trop assez souvent toujours jamais alors hier demain aujourd'hui "
        "afin environ personne rien peut sera seront laisser laissez nuit matin soir avant "
        "presque mme mlle monsieur madame vieux vieil vieille cas jeune",
    .verbEndings = "ment ait aient ez ons er ir",
    .abbreviations =
        "m mm mme mlle dr pr st ste etc env ex fig p pp vol art cf éd chap tél av bd n "
        "no min max janv févr juil sept oct nov déc j.-c",
    .pronouns = "il elle ils elles cela ceci c ce ces cette mais et donc aussi ainsi alors puis "
                "celui-ci leur son sa ses en y",
    .personal = "il elle ils elles lui leur leurs son sa ses eux celui-ci celle-ci",
    .placePrepositions = "à de en dans vers depuis",
    .forms = "aller va vont alla allait allé ira|avoir eu eut|venir vient viennent vint venu "
             "venait|tenir tient tint tenu|devenir devient devint devenu|revenir revient revint "
             "revenu retour|prendre prend prit pris prenait|apprendre apprend apprit appris|"
             "comprendre comprit compris|mettre met mit mis mettait|permettre permet permit "
             "permis|promettre promit promis|faire fait fit font faisait|dire dit disait disent|"
             "voir voit vit vu voyait|savoir sait sut su savait|pouvoir peut put pu|vouloir veut "
             "voulut voulu voulait|devoir doit dut dû|recevoir reçoit reçut reçu|boire boit but "
             "bu|croire croit crut cru|connaître connaît connut connu|naître né naquit naissance|"
             "mourir meurt mourut mort|courir courut couru|ouvrir ouvre ouvert ouvrit|offrir "
             "offre offert offrit|écrire écrit écrivit|lire lit lu lut|conduire conduit conduisit|"
             "construire construit construisit construction|vivre vit vécu vécut|suivre suit "
             "suivit|rire rit|partir part parti partit départ|sortir sort sorti sortit|dormir "
             "dort dormit|servir sert servit|perdre perd perdu perdit perte|vendre vend vendu "
             "vendit vente|rendre rend rendu rendit|répondre répond répondu répondit réponse|"
             "attendre attend attendu attendit|descendre descend descendit|entendre entend "
             "entendu entendit|asseoir assis assit|falloir faut fallut|fermer ferme fermé "
             "fermeture|choisir choix|trouver trouva trouvé|commencer commence début|finir fini "
             "finit fin|acheter achat|payer paie paiement|arriver arrivée|décider décision|"
             "emmener emmène|appeler appelle appelé|œil yeux|travail travaux",
    .synonyms =
        "commencer débuter démarrer|finir terminer arrêter cesser|acheter acquérir|coûter "
        "prix tarif|recevoir obtenir|métier travail profession emploi|patron directeur chef "
        "responsable|médecin docteur|enfant gamin|voiture auto véhicule|vélo bicyclette|"
        "téléphoner appeler|informer prévenir signaler|remarquer découvrir|grand énorme|"
        "fâché furieux colère|content heureux|triste malheureux|malade souffrant|louer "
        "location|contrat accord|résilier annuler|permettre autoriser droit|interdire "
        "défendre|besoin nécessaire|casser abîmer endommager|réparer|sac valise|chien chat "
        "animal|photo image|maison logement|habiter vivre loger|envoyer expédier|donner "
        "apporter offrir remettre|magasin boutique|répondre réponse|demander|chercher "
        "rechercher|mettre placer installer poser|blesser|sauver secourir|voyage trajet|"
        "rapide vite|choisir élire|garder conserver|réunion séance|arriver survenir|baisser "
        "diminuer|augmenter hausse|employé salarié|argent|erreur faute|cadeau|raison cause|"
        "aider|parler discuter|obligatoire devoir falloir|billet entrée ticket|emmener "
        "conduire transporter|manger nourriture repas",
    .greetings = "bonjour|bonsoir|salut|cher|chère|chers|madame|monsieur",
    .closings = "cordialement|bien cordialement|bien à vous|amicalement|merci|merci d'avance|"
                "salutations|à bientôt|bonne journée|sincèrement|bises",
    .requestWords = "explique expliquer expliquez montre donne dis dit texte passage liste phrase "
                    "phrases point points ligne lignes document article décris sais signifie merci "
                    "date dates chiffres résume aide-moi comprendre parle",
    .definitions =
        "est un=>Qu'est-ce que {} ?|est une=>Qu'est-ce que {} ?|est le=>Qu'est-ce que {} "
        "?|est la=>Qu'est-ce que {} ?|désigne=>Que désigne {} ?|"
        "signifie=>Que signifie {} ?",
    .question =
        {.person = "qui|à qui|de qui|par qui|quelle personne|avec qui",
         .place = "où|d'où|par où|dans quel|dans quelle|à quel endroit|quel endroit|quel lieu",
         .time = "quand|depuis quand|à quelle heure|quelle heure|quel jour|quelle date|en quelle "
                 "année|quelle année|jusqu'à quand|dates|date",
         .quantity = "combien|à combien|depuis combien|quelle quantité|quelle distance|quelle "
                     "longueur|quelle hauteur|quel prix|quel âge|quel pourcentage|chiffres|quelle "
                     "température|quelle part|quelle vitesse",
         .reason = "pourquoi|pour quelle raison|quelle est la raison|raison|à cause de quoi",
         .definition = "qu'est-ce que|qu'est-ce qu|que signifie|c'est quoi|que sont",
         .permission = "peut-on|puis-je|est-ce que je peux|est-il permis|est-il interdit|a-t-on le "
                       "droit|peut-il|peuvent-ils|peuvent-elles|peut|est-ce que|faut-il|dois-je",
         .profession = "métier|profession|dans la vie",
         .other = "que|qu|quel|quelle|quels|quelles|quoi|comment|laquelle|lequel",
         .money = "coûte|coûtent|coûté|prix|tarif|payer|cotisation|argent|budget|cher|s'élève|coût",
         .duration = "combien de temps|durée|dure|quel âge|depuis combien",
         .length = "distance|longueur|hauteur|profondeur|largeur|loin",
         .frequency = "combien de fois|à quelle fréquence"},
    .answer =
        {.person = "m|mme|dr|monsieur|madame|président|présidente|directeur|directrice|maire|"
                   "professeur|chef|docteur|"
                   "ingénieur|chercheur|chercheuse|raconte|"
                   "selon|explique",
         .firstPerson = "je|j'ai|moi|nous|j",
         .place =

             "à la|au|dans|sur|sous|près|près du|près de|derrière|devant|à côté|chez|en face|rue|"
             "place|salle|ville|gare|marché|entrée|bâtiment|école|à l|aux|dans un|dans une|dans l|"
             "dans le|dans la|au bord|au fond|au bout|entre|en bas|en haut|au-dessus|au-dessous|"
             "dehors|contre le|contre la|sous le|sous la|hors de",
         .time = "heure|heures|h|aujourd'hui|demain|hier|matin|soir|midi|minuit|siècle|dès|jusqu|"
                 "avant|après|depuis|pendant|tous les jours|chaque|dernier|dernière|prochain|aube|"
                 "crépuscule|lendemain|veille|bientôt|plus tard|tôt|tard|saison|nuit",
         .reason = "parce que|parce qu|à cause|en raison|grâce à|puisque|faute de",
         .weakReason = "car|donc|afin|pour|comme|c'est pourquoi|ainsi",
         .definition =

             "est un|est une|est le|est la|désigne|signifie|sont des|s'appelle|était un|était une|"
             "était le|était la|fut|avait été|a été|travaillait comme|devenu|devenue",
         .negation = "ne|n|pas|jamais|aucun|aucune|rien|personne|interdit|interdite|interdits|"
                     "interdites|sans|défendu|non|ni",
         .permission = "interdit|interdite|interdits|autorisé|autorisée|permis|peut|peuvent|"
                       "pourront|oui|non|pas|doit|doivent",
         .numbers = "deux|trois|quatre|cinq|six|sept|huit|neuf|dix|onze|douze|treize|quatorze|"
                    "quinze|seize|vingt|trente|quarante|cinquante|soixante|cent|cents|mille|"
                    "million|millions|moitié|tiers|quart|dizaine|douzaine|centaine|gratuit",
         .money = "euro|euros|€|centime|centimes|franc|francs|dollars|gratuit|gratuitement",
         .duration = "seconde|secondes|minute|minutes|heure|heures|jour|jours|semaine|semaines|"
                     "mois|an|ans|année|années",
         .length = "mètre|mètres|kilomètre|kilomètres|km|cm|mm|centimètres",
         .frequency = "fois|chaque|tous les|toutes les"},
    .phrases =
        {.keySentences = "**Phrases clés**",
         .keyTerms = "**Termes clés**",
         .textSays = "Le texte dit :",
         .foundNothing =
             "Je n'ai trouvé aucune phrase à ce sujet dans le texte. Voici les plus parlantes :",
         .dates = "Le texte donne ces dates :",
         .numbers = "Le texte donne ces nombres :",
         .ownWordsNote = "*Ces phrases sont reprises du texte telles quelles ; aucun modèle de "
                         "langage n'est connecté.*",
         .deeper = "Plus à ce sujet, tiré de notre conversation :",
         .fromConversation = "Dans notre conversation :",
         .lookUp = "Que voulez-vous y chercher ?",
         .about = "Que dit le texte sur « {} » ?",
         .summarize = "Résume le texte en trois phrases",
         .conjunction = " et ",
         .separator = ", ",
         .gapQuestion = "Quel mot manque ici ?",
         .explanation = "Le texte dit : « {} »",
         .primer = "{} questions sur votre texte. Chacune omet un mot de l'une de ses phrases ; "
                   "choisissez le mot qui manque.",
         .toBegin = "Pour commencer : {}"},
};

} // namespace vorq::gateway
